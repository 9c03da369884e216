#pragma once

#include <QtCore/QList>

#include "controller/commands/Command.h"

namespace orlenta::controller {

/// All commands with their titles, keys and tool tips, in the order of menus: the one place that menus, buttons, tool
/// tips, key handlers and the list of keys read. A command that a desktop may take for itself has a second key.
class CommandTable final {
public:
    CommandTable() = delete;

    [[nodiscard]] static const QList<Command> &all();
    [[nodiscard]] static const Command &command(CommandId id);
    [[nodiscard]] static QString groupTitle(CommandGroup group);
    /// Whether the group's keys count in the whole window.
    [[nodiscard]] static bool isMenu(CommandGroup group) { return group <= CommandGroup::Help; }
};

} // namespace orlenta::controller
