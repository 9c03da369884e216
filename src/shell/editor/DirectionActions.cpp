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
    : QObject(&list), m_controller(session.controller()), m_commands(commands) {
    const QList<DirectionCommand> all = commands.menuCommands({});
    for (const DirectionCommand &command : all) {
        auto *action = new QAction(Icon::named(command.icon), command.title, this);
        action->setShortcut(command.key);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setAutoRepeat(false);
        connect(action, &QAction::triggered, this, [this, wish = command.wish, &list] {
            if (const auto id = target())
                m_commands.carryOut(wish, *id, &list);
        });
        m_actions.append(action);
    }
    list.addActions(m_actions);
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
    const QList<DirectionCommand> commands = m_commands.menuCommands(target());
    for (qsizetype index = 0; index < m_actions.size(); ++index) {
        QAction *action = m_actions.at(index);
        action->setText(commands.at(index).title);
        action->setEnabled(commands.at(index).isEnabled);
        action->setStatusTip(action->text());
    }
}

} // namespace orlenta::shell
