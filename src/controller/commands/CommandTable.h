#pragma once

#include <QtCore/QList>

#include "controller/commands/Command.h"

namespace orlenta::controller {

/// All commands with titles, keys and tool tips, in menu order. Menus, buttons, tool tips, key handlers and the list of
/// shortcuts all read it. A command whose key some desktops reserve has a second key.
class CommandTable final {
public:
    CommandTable() = delete;

    [[nodiscard]] static const QList<Command> &all();
    [[nodiscard]] static const Command &command(CommandId id);
    [[nodiscard]] static QString groupTitle(CommandGroup group);
    /// What the command needs to have an effect, as a sentence; empty if it always has one. For tool tips of disabled
    /// commands, and for the status line when a command does nothing.
    [[nodiscard]] static QString requirement(CommandId id);
    /// Whether the group's keys work in the whole window.
    [[nodiscard]] static bool isMenu(CommandGroup group) { return group <= CommandGroup::Help; }
};

} // namespace orlenta::controller
