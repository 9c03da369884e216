#include "shell/editor/DirectionRecordings.h"

#include <algorithm>
#include <utility>

#include <qcoro/qcorotask.h>

#include "audio/devices/AudioDebugLogger.h"
#include "controller/DirectionAudio.h"
#include "controller/LineEditing.h"
#include "controller/ProjectController.h"

namespace orlenta::shell {

using audio::AudioRecorder;

DirectionRecordings::DirectionRecordings(controller::ProjectController &controller, const AudioRecorder::Parts &parts,
                                         QObject *parent)
    : QObject(parent), m_controller(controller), m_parts(parts) {
    connect(&controller, &controller::ProjectController::scriptLinesChanged, this, &DirectionRecordings::followLines);
    // Queued, since whoever waits may take this object away.
    connect(&controller.directionAudio(), &controller::DirectionAudio::settled, this,
            &DirectionRecordings::tellIfSettled, Qt::QueuedConnection);
}

DirectionRecordings::~DirectionRecordings() {
    // A recorder that is ended on the way out has nobody left to tell.
    for (AudioRecorder *recorder : std::as_const(m_recorders))
        recorder->disconnect(this);
}

DirectionRecordings::State DirectionRecordings::state(const model::LineId &id) const {
    const AudioRecorder *recorder = m_recorders.value(id);
    if (recorder == nullptr)
        return {};
    return {recorder->isRecording() || recorder->isStarting(), recorder->recordingDuration(),
            m_quiet.contains(id) ? QString() : recorder->errorMessage().value_or(QString())};
}

bool DirectionRecordings::isRecording() const {
    return std::any_of(m_recorders.cbegin(), m_recorders.cend(),
                       [](const AudioRecorder *recorder) { return recorder->isRecording() || recorder->isStarting(); });
}

void DirectionRecordings::start(const model::LineId &id) {
    if (m_controller.lines().find(id) == nullptr || !m_awaitingSettled.empty())
        return;
    m_quiet.remove(id);
    recorderOf(id).startRecording();
    Q_EMIT changed(id);
}

void DirectionRecordings::stop(const model::LineId &id) {
    if (AudioRecorder *recorder = m_recorders.value(id))
        recorder->stopRecording();
    Q_EMIT changed(id);
}

bool DirectionRecordings::isSettled() const {
    return !m_controller.directionAudio().isBusy() &&
           std::none_of(m_recorders.cbegin(), m_recorders.cend(),
                        [](const AudioRecorder *recorder) { return recorder->hasUnfinishedTake(); });
}

void DirectionRecordings::settle(std::function<void()> settled) {
    m_awaitingSettled.push_back(std::move(settled));
    for (AudioRecorder *recorder : std::as_const(m_recorders))
        if (recorder->hasUnfinishedTake())
            recorder->stopRecording();
    QMetaObject::invokeMethod(this, &DirectionRecordings::tellIfSettled, Qt::QueuedConnection);
}

void DirectionRecordings::tellIfSettled() {
    if (!isSettled())
        return;
    for (const auto &settled : std::exchange(m_awaitingSettled, {}))
        settled();
}

AudioRecorder &DirectionRecordings::recorderOf(const model::LineId &id) {
    AudioRecorder *&recorder = m_recorders[id];
    if (recorder != nullptr)
        return *recorder;
    recorder = new AudioRecorder(m_parts, this);
    const auto tell = [this, id] { Q_EMIT changed(id); };
    connect(recorder, &AudioRecorder::isRecordingChanged, this, tell);
    connect(recorder, &AudioRecorder::recordingDurationChanged, this, tell);
    connect(recorder, &AudioRecorder::errorMessageChanged, this, tell);
    connect(recorder, &AudioRecorder::takeEnded, this, &DirectionRecordings::tellIfSettled);
    connect(recorder, &AudioRecorder::microphoneSettingsWanted, this, &DirectionRecordings::microphoneSettingsWanted);
    connect(recorder, &AudioRecorder::recordingFinished, this,
            [this, id](double duration, const QUrl &take) { attach(take, duration, id); });
    recorder->setOnSpontaneousFinish([this, id](double duration, const QUrl &take) {
        audio::AudioDebugLogger::log(
            QStringLiteral("Record direction ended spontaneously for line ID %1; attaching partial take")
                .arg(id.text()));
        attach(take, duration, id);
    });
    return *recorder;
}

void DirectionRecordings::attach(const QUrl &take, double duration, const model::LineId &id) {
    if (m_controller.lines().find(id) == nullptr) {
        m_takesOfGoneLines.insert(id, {take, duration});
        return;
    }
    m_quiet.insert(id);
    Q_EMIT changed(id);
    m_controller.directionAudio().installRecording(take, duration, id);
}

void DirectionRecordings::followLines() {
    const QList<model::LineId> ids = m_recorders.keys();
    for (const model::LineId &id : ids) {
        if (m_controller.lines().find(id) != nullptr)
            continue;
        if (m_recorders.value(id)->hasUnfinishedTake())
            m_recorders.value(id)->stopRecording();
        else
            m_recorders.take(id)->deleteLater();
    }
    m_quiet.intersect({m_recorders.keyBegin(), m_recorders.keyEnd()});
    const QList<model::LineId> waiting = m_takesOfGoneLines.keys();
    for (const model::LineId &id : waiting)
        if (m_controller.lines().find(id) != nullptr) {
            const FinishedTake take = m_takesOfGoneLines.take(id);
            attach(take.url, take.duration, id);
        }
}

} // namespace orlenta::shell
