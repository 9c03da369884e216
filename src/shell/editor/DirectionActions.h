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

/// The direction commands of the line on which the keyboard acts, for the menu bar. Their keys are single letters, so
/// they count only while the script list or a control in it has the focus and no text does; on a keyboard whose letters
/// are not Latin, the key that has the letter in another of the user's layouts counts. Main thread.
class DirectionActions final : public CommandActions {
    Q_OBJECT
public:
    /// `list` is where the keys count. What it is given outlives the actions.
    DirectionActions(controller::ProjectSession &session, DirectionCommands &commands, QWidget &list);

private:
    [[nodiscard]] std::optional<model::LineId> target() const;
    void refresh();

    const controller::ProjectController &m_controller;
    DirectionCommands &m_commands;
};

} // namespace orlenta::shell
