#include "shell/windows/StatusLine.h"

#include <algorithm>
#include <chrono>

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>

#include "controller/commands/CommandTable.h"
#include "controller/direction/DirectionAudio.h"
#include "controller/document/Notices.h"
#include "controller/export/Exporting.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/takes/LineRuntime.h"
#include "shell/controls/NoticeLabel.h"
#include "shell/controls/TextLabel.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Theme.h"
#include "shell/windows/PlayingMark.h"
#include "shell/windows/ProgressMark.h"
#include "shell/windows/RecordingMark.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

using speech::LineGenerationQueue;

namespace {

/// Most imports finish sooner and need no message.
constexpr std::chrono::milliseconds importDelay{300};
constexpr int importSteps = 1000;

constexpr std::chrono::seconds refusalTime{6};

} // namespace

StatusLine::StatusLine(controller::ProjectSession &session, ScriptEditor &editor, QWidget *parent)
    : QWidget(parent), m_controller(session.controller()), m_generator(session.generator()),
      m_audio(new TextLabel({}, TextLabel::Style::Caption)), m_refusal(new NoticeLabel),
      m_import(new ProgressMark({u"Import progress"_s, u"How much of the audio is imported"_s, u"Cancel"_s,
                                 u"Cancel import"_s, u"Cancel the import; nothing is kept of it"_s})),
      m_export(new TextLabel(u"Exporting audio…"_s, TextLabel::Style::Caption)),
      m_generation(new ProgressMark({u"Generation progress"_s, u"Generated lines of the current batch"_s, u"Stop"_s,
                                     controller::CommandTable::command(CommandId::StopGenerating).title,
                                     tipOf(CommandId::StopGenerating)})) {
    m_audio->setWordWrap(false);
    m_refusal->setWordWrap(false);
    // However long it is, the window can be as narrow as without it.
    m_refusal->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_refusal->hide();
    m_refusalTime.setSingleShot(true);
    m_refusalTime.setInterval(refusalTime);
    connect(&m_refusalTime, &QTimer::timeout, m_refusal, &QWidget::hide);
    connect(&m_controller.notices(), &controller::Notices::refused, this, &StatusLine::showRefusal);
    m_export->setWordWrap(false);
    const int unit = Theme::unit(this);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(unit * 3, unit / 2, unit * 3, unit / 2);
    layout->addWidget(m_audio);
    auto *recording = new RecordingMark(session);
    connect(recording, &RecordingMark::lineRequested, this, &StatusLine::lineRequested);
    layout->addWidget(recording);
    layout->addWidget(new PlayingMark(session.playback(), editor));
    layout->addWidget(m_refusal, 1);
    layout->addStretch();
    for (QWidget *mark :
         {static_cast<QWidget *>(m_import), static_cast<QWidget *>(m_export), static_cast<QWidget *>(m_generation)})
        layout->addWidget(mark);

    controller::onAnyChange<controller::ScriptLinesChanged, controller::RuntimeChanged>(m_controller, this,
                                                                                        [this] { showAudio(); });
    m_importDelay.setSingleShot(true);
    m_importDelay.setInterval(importDelay);
    connect(&m_importDelay, &QTimer::timeout, m_import, &QWidget::show);
    controller::DirectionAudio &imports = m_controller.directionAudio();
    connect(&imports, &controller::DirectionAudio::importProgressChanged, this, &StatusLine::followImport);
    connect(m_import, &ProgressMark::stopRequested, &imports, &controller::DirectionAudio::cancelImports);
    connect(&m_controller.exporting(), &controller::Exporting::isBusyChanged, this, &StatusLine::showExport);
    connect(&m_generator.queue(), &LineGenerationQueue::progressChanged, this, &StatusLine::showGeneration);
    connect(m_generation, &ProgressMark::stopRequested, &m_generator.queue(), &LineGenerationQueue::stop);
    showAudio();
    followImport();
    showExport();
    showGeneration();
}

void StatusLine::showAudio() {
    const model::LineIdList &script = m_controller.scriptLineIds();
    const auto generated = std::count_if(script.begin(), script.end(), [this](const model::LineId &id) {
        return m_controller.runtime().hasGeneratedAudio(id);
    });
    m_audio->setText(QStringLiteral("%1 of %2 lines have audio").arg(generated).arg(script.size()));
}

void StatusLine::showRefusal(const QString &reason) {
    QApplication::beep();
    m_refusal->setNotice({}, reason);
    m_refusal->show();
    m_refusalTime.start();
}

// Hides the audio count if there isn't room for everything.
void StatusLine::fit() {
    const QMargins margins = layout()->contentsMargins();
    int needed = margins.left() + margins.right() + m_audio->sizeHint().width();
    for (const QWidget *other : findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (other != m_audio && !other->isHidden())
            needed += layout()->spacing() + other->sizeHint().expandedTo(other->minimumSize()).width();
    m_audio->setVisible(needed <= width());
}

bool StatusLine::event(QEvent *event) {
    // A part of the strip was shown, hidden or resized.
    if (event->type() == QEvent::LayoutRequest)
        fit();
    return QWidget::event(event);
}

void StatusLine::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fit();
}

void StatusLine::followImport() {
    const controller::DirectionAudio &imports = m_controller.directionAudio();
    if (!imports.isImporting()) {
        m_importDelay.stop();
        m_import->hide();
        return;
    }
    m_import->setProgress(u"Importing audio…"_s, static_cast<int>(imports.importProgress() * importSteps), importSteps);
    if (m_import->isHidden() && !m_importDelay.isActive())
        m_importDelay.start();
}

void StatusLine::showExport() {
    m_export->setVisible(m_controller.exporting().isBusy());
}

void StatusLine::showGeneration() {
    const LineGenerationQueue &queue = m_generator.queue();
    const LineGenerationQueue::Progress progress = queue.progress();
    m_generation->setVisible(queue.isActive());
    m_generation->setProgress(QStringLiteral("Generating %1 of %2").arg(progress.number).arg(progress.total),
                              std::max(0, progress.number - 1), std::max(1, progress.total));
    m_generation->setStoppable(queue.canStop());
}

} // namespace orlenta::shell
