#pragma once

#include <optional>

#include "model/Ids.h"
#include "shell/menus/CommandActions.h"

namespace orlenta::controller {
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class DirectionCommands;

/// The direction commands of the current line, for the menu bar. Their shortcuts are single letters, so they work only
/// while the script list or a control in it has the focus, but not in a text field. If the keyboard has no Latin
/// letters, the key with that letter in another of the user's layouts works. Main thread.
class DirectionActions final : public CommandActions {
    Q_OBJECT
public:
    /// The shortcuts work in `list`. All arguments outlive the actions.
    DirectionActions(controller::ProjectSession &session, DirectionCommands &commands, QWidget &list);

private:
    [[nodiscard]] std::optional<model::LineId> target() const;
    void refresh();

    const controller::ProjectController &m_controller;
    DirectionCommands &m_commands;
};

} // namespace orlenta::shell
