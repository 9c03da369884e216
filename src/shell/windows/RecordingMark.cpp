#include "shell/windows/RecordingMark.h"

#include <chrono>

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "audio/files/AudioDurations.h"
#include "controller/direction/DirectionRecordings.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "shell/controls/ShownText.h"
#include "shell/controls/TextLabel.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

RecordingMark::RecordingMark(controller::ProjectSession &session, QWidget *parent)
    : QWidget(parent), m_controller(session.controller()), m_recordings(session.recordings()),
      m_line(new QPushButton(u"Recording"_s, this)), m_time(new TextLabel({}, TextLabel::Style::Caption, this)),
      m_stop(new QPushButton(u"Stop"_s, this)) {
    m_line->setToolTip(u"Go to the line being recorded"_s);
    m_time->setWordWrap(false);
    m_stop->setToolTip(u"Stop recording"_s);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget *part :
         {static_cast<QWidget *>(m_line), static_cast<QWidget *>(m_time), static_cast<QWidget *>(m_stop)}) {
        // Keep the height, so that the recorded row doesn't move when a take starts.
        QSizePolicy policy = part->sizePolicy();
        policy.setRetainSizeWhenHidden(part == m_stop);
        part->setSizePolicy(policy);
        layout->addWidget(part);
    }
    for (QPushButton *button : {m_line, m_stop})
        Theme::setRole(button, ButtonRole::Quiet);
    applyMeasures();
    connect(m_line, &QPushButton::clicked, this, [this] {
        if (const auto id = m_recordings.recordingLine())
            Q_EMIT lineRequested(*id);
    });
    connect(m_stop, &QPushButton::clicked, this, [this] {
        if (const auto id = m_recordings.recordingLine())
            m_recordings.stop(*id);
    });
    connect(&m_recordings, &controller::DirectionRecordings::changed, this, &RecordingMark::follow);
    controller::onAnyChange<controller::ScriptLinesChanged, controller::TabsChanged>(m_controller, this,
                                                                                     [this] { follow(); });
    follow();
}

void RecordingMark::follow() {
    const auto id = m_recordings.recordingLine();
    for (QWidget *part :
         {static_cast<QWidget *>(m_line), static_cast<QWidget *>(m_time), static_cast<QWidget *>(m_stop)})
        part->setVisible(id.has_value());
    if (id)
        showRecording(*id);
}

void RecordingMark::showRecording(const model::LineId &id) {
    const QString place = placeOf(id);
    m_line->setText(QStringLiteral("Recording %1").arg(place));
    m_stop->setAccessibleName(QStringLiteral("Stop recording %1").arg(place));
    const std::chrono::duration<double> duration(m_recordings.state(id).duration);
    m_time->setText(audio::ScriptLineAudioDurationReader::text(duration));
    m_time->setAccessibleName(QStringLiteral("Recording time, %1").arg(m_time->text()));
}

QString RecordingMark::placeOf(const model::LineId &id) const {
    if (const qsizetype index = m_controller.scriptLineIds().indexOf(id); index >= 0)
        return QStringLiteral("line %1").arg(index + 1);
    for (const model::ProjectTab &tab : m_controller.project().tabs) {
        const qsizetype index = tab.lineIds.indexOf(id);
        if (index < 0)
            continue;
        const QString name = fontMetrics().elidedText(shownName(tab.name), Qt::ElideRight, Theme::unit(this) * 24);
        return QStringLiteral("line %1 of %2").arg(QString::number(index + 1), name);
    }
    return QStringLiteral("a deleted line");
}

void RecordingMark::applyMeasures() {
    const int icon = Theme::iconSize(this);
    layout()->setSpacing(Theme::unit(this));
    m_line->setIcon(Icon::named(u"record"_s, Icon::Tint::Danger));
    m_stop->setIcon(Icon::named(u"stop"_s, Icon::Tint::Danger));
    for (QPushButton *button : {m_line, m_stop})
        button->setIconSize({icon, icon});
}

void RecordingMark::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() != nullptr && (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange))
        applyMeasures();
}

} // namespace orlenta::shell
