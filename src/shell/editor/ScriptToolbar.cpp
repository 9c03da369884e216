#include "shell/editor/ScriptToolbar.h"

#include <utility>

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>

#include "audio/playback/PlaybackController.h"
#include "controller/generation/GenerationPlan.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "shell/controls/PlainLabel.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

ScriptToolbar::ScriptToolbar(controller::ProjectSession &session, ScriptCommands &commands, QWidget *parent)
    : QWidget(parent), m_session(session), m_commands(commands), m_generate(new QPushButton(this)),
      m_play(new QPushButton(this)), m_add(new QPushButton(this)) {
    Theme::setRole(m_play, ButtonRole::Quiet);
    Theme::setRole(m_add, ButtonRole::Quiet);
    m_add->setIcon(Icon::named(QStringLiteral("plus")));
    m_add->setAccessibleName(QStringLiteral("Add Line"));
    m_add->setToolTip(tipOf(CommandId::AddLine));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_generate);
    layout->addWidget(m_play);
    layout->addWidget(m_add);
    layout->setContentsMargins(0, 0, 0, 0);
    applyMeasures();

    controller::ProjectController &project = session.controller();
    connect(m_generate, &QPushButton::clicked, this, [this] {
        m_session.generator().enqueue(controller::planForSelection(m_session.controller()).lines,
                                      speech::LineGenerationQueue::Priority::Normal);
    });
    connect(m_play, &QPushButton::clicked, &commands, &ScriptCommands::togglePlayback);
    connect(m_add, &QPushButton::clicked, this, [&project] { project.lines().addLine(); });
    controller::onAnyChange<controller::SelectionChanged, controller::ScriptLinesChanged, controller::RuntimeChanged>(
        project, this, [this] { sync(); });
    connect(&session.playback(), &audio::PlaybackController::isPlayingChanged, this, &ScriptToolbar::sync);
    sync();
}

void ScriptToolbar::sync() {
    const controller::GenerationPlan plan = controller::planForSelection(m_session.controller());
    const bool isAgain = plan.kind == controller::GenerationKind::Regenerate;
    m_generate->setText(isAgain ? QStringLiteral("Regenerate") : QStringLiteral("Generate"));
    m_generate->setIcon(isAgain ? Icon::named(QStringLiteral("arrow-clockwise"))
                                : Icon::named(QStringLiteral("waveform"), Icon::Tint::OnAccent));
    m_generate->setEnabled(!plan.lines.isEmpty());
    // Only work that is missing is worth the loudest control.
    Theme::setRole(m_generate, isAgain ? ButtonRole::Normal : ButtonRole::Primary);
    const QString lines = plan.lines.size() == 1 ? QStringLiteral("1 selected line")
                                                 : QStringLiteral("%1 selected lines").arg(plan.lines.size());
    m_generate->setToolTip(
        tipWithKey(QStringLiteral("%1 speech for %2").arg(m_generate->text(), lines), CommandId::Generate));

    const qsizetype selected = m_session.controller().selection().selectedLineIds().size();
    const bool isPlaying = m_session.playback().isPlaying();
    m_play->setAccessibleName(isPlaying      ? QStringLiteral("Stop")
                              : selected > 1 ? QStringLiteral("Play All")
                                             : QStringLiteral("Play"));
    m_play->setText(m_showsWords ? m_play->accessibleName() : QString());
    m_add->setText(m_showsWords ? m_add->accessibleName() : QString());
    m_play->setIcon(Icon::named(isPlaying ? QStringLiteral("stop") : QStringLiteral("play")));
    m_play->setEnabled(isPlaying || m_commands.canPlaySelection());
    m_play->setToolTip(isPlaying ? tipWithKey(QStringLiteral("Stop"), CommandId::PlaySelection)
                                 : tipOf(CommandId::PlaySelection));
}

void ScriptToolbar::setShowsWords(bool showsWords) {
    if (std::exchange(m_showsWords, showsWords) != showsWords)
        sync();
}

QSize ScriptToolbar::minimumSizeHint() const {
    const int bare = Theme::unit(this) * 6;
    const int unit = Theme::unit(this);
    const int generate =
        m_generate->fontMetrics().horizontalAdvance(QStringLiteral("Regenerate")) + Theme::iconSize(this) + unit * 8;
    return {generate + 2 * (bare + layout()->spacing()), m_generate->sizeHint().height()};
}

void ScriptToolbar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() == nullptr || (event->type() != QEvent::FontChange && event->type() != QEvent::PaletteChange))
        return;
    applyMeasures();
}

void ScriptToolbar::applyMeasures() {
    layout()->setSpacing(Theme::unit(this));
    const int icon = Theme::iconSize(this);
    for (QPushButton *button : {m_generate, m_play, m_add})
        button->setIconSize({icon, icon});
}

} // namespace orlenta::shell
