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

/// The direction commands of the current line, for the menu bar. Main thread.
class DirectionActions final : public CommandActions {
    Q_OBJECT
public:
    /// The shortcuts work in the window of `list`. All arguments outlive the actions.
    DirectionActions(controller::ProjectSession &session, DirectionCommands &commands, QWidget &list);

private:
    [[nodiscard]] std::optional<model::LineId> target() const;
    void refresh();

    const controller::ProjectController &m_controller;
    DirectionCommands &m_commands;
};

} // namespace orlenta::shell
