#include "shell/editor/DirectionActions.h"

#include <QtGui/QAction>
#include <QtWidgets/QWidget>

#include "audio/playback/PlaybackController.h"
#include "controller/direction/DirectionRecordings.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "shell/theme/Icon.h"

namespace orlenta::shell {

DirectionActions::DirectionActions(controller::ProjectSession &session, DirectionCommands &commands, QWidget &list)
    : CommandActions(DirectionCommands::ids(), &list), m_controller(session.controller()), m_commands(commands) {
    for (const CommandId id : DirectionCommands::ids()) {
        QAction *action = (*this)[id];
        action->setAutoRepeat(false);
        onTriggered(id, [this, id, &list] {
            if (const auto line = target())
                m_commands.carryOut(id, *line, &list);
        });
        list.addAction(action);
    }
    using Playback = audio::PlaybackController;
    controller::onAnyChange<controller::SelectionChanged, controller::RuntimeChanged, controller::PresetsChanged>(
        m_controller, this, [this] { refresh(); });
    controller::onChange<controller::LinesChanged>(m_controller, this, [this](const auto &change) {
        if (change.fields().testFlag(controller::LineField::Settings))
            refresh();
    });
    connect(&session.playback(), &Playback::isPlayingChanged, this, &DirectionActions::refresh);
    connect(&session.playback(), &Playback::currentAudioSourceChanged, this, &DirectionActions::refresh);
    connect(&session.recordings(), &controller::DirectionRecordings::changed, this, &DirectionActions::refresh);
    refresh();
}

std::optional<model::LineId> DirectionActions::target() const {
    const controller::Selection &selection = m_controller.selection();
    const auto alone = selection.singleSelectedLineId();
    return alone ? alone : selection.selectionFocusId();
}

void DirectionActions::refresh() {
    const auto line = target();
    for (const CommandId id : DirectionCommands::ids()) {
        const DirectionCommands::CommandState state = m_commands.stateOf(id, line);
        QAction &action = *(*this)[id];
        action.setText(state.title);
        setEnabled(id, state.isEnabled);
        action.setStatusTip(state.title);
    }
}

} // namespace orlenta::shell
