#include "shell/editor/ScriptToolbar.h"

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
      m_play(new QPushButton(this)), m_add(new QPushButton(QStringLiteral("Add Line"), this)),
      m_status(new PlainLabel(this)) {
    Theme::setRole(m_generate, ButtonRole::Primary);
    Theme::setRole(m_play, ButtonRole::Quiet);
    Theme::setRole(m_add, ButtonRole::Quiet);
    m_add->setIcon(Icon::named(QStringLiteral("plus")));
    m_add->setToolTip(tipOf(CommandId::AddLine));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_generate);
    layout->addWidget(m_play);
    layout->addWidget(m_add);
    layout->addStretch(1);
    layout->addWidget(m_status);
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
    m_generate->setIcon(
        Icon::named(isAgain ? QStringLiteral("arrow-clockwise") : QStringLiteral("waveform"), Icon::Tint::OnAccent));
    m_generate->setEnabled(!plan.lines.isEmpty());
    m_generate->setToolTip(
        tipWithKey(QStringLiteral("%1 the selected lines").arg(m_generate->text()), CommandId::Generate));

    const qsizetype selected = m_session.controller().selection().selectedLineIds().size();
    const bool isPlaying = m_session.playback().isPlaying();
    m_play->setText(isPlaying      ? QStringLiteral("Stop")
                    : selected > 1 ? QStringLiteral("Play All")
                                   : QStringLiteral("Play"));
    m_play->setIcon(Icon::named(isPlaying ? QStringLiteral("stop") : QStringLiteral("play")));
    m_play->setEnabled(isPlaying || m_commands.canPlaySelection());
    m_play->setToolTip(isPlaying ? tipWithKey(QStringLiteral("Stop"), CommandId::PlaySelection)
                                 : tipOf(CommandId::PlaySelection));

    const qsizetype lines = m_session.controller().scriptLineIds().size();
    m_status->setText(selected > 1 ? QStringLiteral("%1 of %2 lines selected").arg(selected).arg(lines) : QString());
    fitStatus();
}

void ScriptToolbar::fitStatus() {
    const QMargins margins = layout()->contentsMargins();
    const int buttons = m_generate->sizeHint().width() + m_play->sizeHint().width() + m_add->sizeHint().width();
    const int taken = buttons + layout()->spacing() * 4 + margins.left() + margins.right();
    m_status->setVisible(width() >= taken + m_status->sizeHint().width());
}

void ScriptToolbar::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fitStatus();
}

void ScriptToolbar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() == nullptr || (event->type() != QEvent::FontChange && event->type() != QEvent::PaletteChange))
        return;
    applyMeasures();
    // The buttons get the new font after their parent.
    QMetaObject::invokeMethod(this, &ScriptToolbar::fitStatus, Qt::QueuedConnection);
}

void ScriptToolbar::applyMeasures() {
    const int unit = Theme::unit(this);
    layout()->setContentsMargins(unit * 3, unit, unit * 4, unit);
    layout()->setSpacing(unit * 2);
    const int icon = Theme::iconSize(this);
    for (QPushButton *button : {m_generate, m_play, m_add})
        button->setIconSize({icon, icon});
    QPalette muted = palette();
    muted.setColor(QPalette::WindowText, ThemeColors::of(palette()).textMuted);
    m_status->setPalette(muted);
}

} // namespace orlenta::shell
