#include "shell/windows/StatusLine.h"

#include <algorithm>
#include <chrono>

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QProgressBar>

#include "controller/direction/DirectionAudio.h"
#include "controller/document/Notices.h"
#include "controller/export/Exporting.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/takes/LineRuntime.h"
#include "shell/controls/NoticeLabel.h"
#include "shell/controls/TextLabel.h"
#include "shell/theme/Theme.h"
#include "shell/windows/PlayingMark.h"
#include "shell/windows/RecordingMark.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

using speech::LineGenerationQueue;

namespace {

/// Most imports finish sooner and need no message.
constexpr std::chrono::milliseconds importDelay{300};

constexpr std::chrono::seconds refusalTime{6};

} // namespace

StatusLine::StatusLine(controller::ProjectSession &session, ScriptEditor &editor, QWidget *parent)
    : QWidget(parent), m_controller(session.controller()), m_generator(session.generator()),
      m_audio(new TextLabel({}, TextLabel::Style::Caption)), m_refusal(new NoticeLabel),
      m_import(new TextLabel(u"Importing audio…"_s, TextLabel::Style::Caption)),
      m_export(new TextLabel(u"Exporting audio…"_s, TextLabel::Style::Caption)),
      m_generation(new TextLabel({}, TextLabel::Style::Caption)), m_progress(new QProgressBar) {
    m_audio->setWordWrap(false);
    m_refusal->setWordWrap(false);
    // However long it is, the window can be as narrow as without it.
    m_refusal->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_refusal->hide();
    m_refusalTime.setSingleShot(true);
    m_refusalTime.setInterval(refusalTime);
    connect(&m_refusalTime, &QTimer::timeout, m_refusal, &QWidget::hide);
    connect(&m_controller.notices(), &controller::Notices::refused, this, &StatusLine::showRefusal);
    m_import->setWordWrap(false);
    m_import->hide();
    m_export->setWordWrap(false);
    m_generation->setWordWrap(false);
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(u"Generation progress"_s);
    m_progress->setToolTip(u"Generated lines of the current batch"_s);
    const int unit = Theme::unit(this);
    m_progress->setFixedSize(unit * 28, std::max(6, unit * 3 / 2));
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(unit * 3, unit / 2, unit * 3, unit / 2);
    layout->addWidget(m_audio);
    auto *recording = new RecordingMark(session);
    connect(recording, &RecordingMark::lineRequested, this, &StatusLine::lineRequested);
    layout->addWidget(recording);
    layout->addWidget(new PlayingMark(session.playback(), editor));
    layout->addWidget(m_refusal, 1);
    layout->addStretch();
    layout->addWidget(m_import);
    layout->addWidget(m_export);
    layout->addWidget(m_generation);
    layout->addWidget(m_progress);

    controller::onAnyChange<controller::ScriptLinesChanged, controller::RuntimeChanged>(m_controller, this,
                                                                                        [this] { showAudio(); });
    m_importDelay.setSingleShot(true);
    m_importDelay.setInterval(importDelay);
    connect(&m_importDelay, &QTimer::timeout, m_import, &QWidget::show);
    connect(&m_controller.directionAudio(), &controller::DirectionAudio::isBusyChanged, this,
            &StatusLine::followImport);
    connect(&m_controller.exporting(), &controller::Exporting::isBusyChanged, this, &StatusLine::showExport);
    connect(&m_generator.queue(), &LineGenerationQueue::isActiveChanged, this, &StatusLine::showGeneration);
    connect(&m_generator.queue(), &LineGenerationQueue::activeLineIdChanged, this, [this] {
        if (m_generator.queue().activeLineId())
            ++m_begun;
        showGeneration();
    });
    showAudio();
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
    if (m_controller.directionAudio().isBusy())
        return m_importDelay.start();
    m_importDelay.stop();
    m_import->hide();
}

void StatusLine::showExport() {
    m_export->setVisible(m_controller.exporting().isBusy());
}

void StatusLine::showGeneration() {
    const LineGenerationQueue &queue = m_generator.queue();
    if (!queue.isActive())
        m_begun = 0;
    m_generation->setVisible(queue.isActive());
    m_progress->setVisible(queue.isActive());
    const int total = std::max(1, m_begun + static_cast<int>(queue.pending().size()));
    m_generation->setText(QStringLiteral("Generating %1 of %2").arg(std::max(1, m_begun)).arg(total));
    m_progress->setRange(0, total);
    m_progress->setValue(std::max(0, m_begun - 1));
}

} // namespace orlenta::shell
