#include "controller/direction/DirectionRecordings.h"

#include <algorithm>
#include <utility>

#include <qcoro/qcorotask.h>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/devices/SoundServer.h"
#include "audio/files/AudioImporter.h"
#include "controller/direction/DirectionAudio.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"

namespace orlenta::controller {

using audio::AudioRecorder;

DirectionRecordings::DirectionRecordings(ProjectController &controller, const AudioRecorder::Parts &parts)
    : m_controller(controller), m_parts(parts), m_kept(controller) {
    onAnyChange<ScriptLinesChanged, TabsChanged>(controller, this, [this] { followLines(); });
    connect(&controller.directionAudio(), &DirectionAudio::adopted, this, &DirectionRecordings::dismissError);
    connect(&controller.directionAudio(), &DirectionAudio::lineGone, this,
            [this](const QUrl &take, double duration, const model::LineId &id) {
                m_takesOfGoneLines.insert(id, {take, duration});
            });
    connect(&controller.directionAudio(), &DirectionAudio::recordingKept, this,
            [this](const QUrl &take, double duration, const model::LineId &id, const QString &reason) {
                m_kept.keep({id, take, duration, reason});
            });
    onChange<LinesChanged>(controller, this, [this](const LinesChanged &change) {
        if (change.fields() & LineField::Settings)
            followModes();
    });
    onChange<PresetsChanged>(controller, this, [this](const PresetsChanged &) { followModes(); });
    connect(&parts.server, &audio::SoundServer::stateChanged, this, &DirectionRecordings::followServer);
}

DirectionRecordings::~DirectionRecordings() {
    // Destroying a recorder can end its take; don't handle that here any more.
    for (AudioRecorder *recorder : std::as_const(m_recorders))
        recorder->disconnect(this);
}

DirectionRecordings::State DirectionRecordings::state(const model::LineId &id) const {
    const AudioRecorder *recorder = m_recorders.value(id);
    if (recorder == nullptr)
        return {};
    return {recorder->isRecording() || recorder->isStarting(), recorder->recordingDuration(),
            recorder->errorMessage().value_or(QString())};
}

std::optional<model::LineId> DirectionRecordings::recordingLine() const {
    for (auto recorder = m_recorders.cbegin(); recorder != m_recorders.cend(); ++recorder)
        if (state(recorder.key()).isRecording)
            return recorder.key();
    return std::nullopt;
}

bool DirectionRecordings::isRecording() const {
    return recordingLine().has_value();
}

void DirectionRecordings::start(const model::LineId &id) {
    if (m_controller.lines().find(id) == nullptr || !m_isAllowed)
        return;
    endOtherTakes(id);
    recorderOf(id).dismissError();
    recorderOf(id).startRecording();
    Q_EMIT changed(id);
    Q_EMIT attentionWanted(id);
}

void DirectionRecordings::endOtherTakes(const model::LineId &id) {
    const QList<model::LineId> ids = m_recorders.keys();
    for (const model::LineId &other : ids) {
        const AudioRecorder *recorder = m_recorders.value(other);
        if (other == id)
            continue;
        if (state(other).isRecording)
            stop(other);
        else if (!recorder->hasUnfinishedTake() && !recorder->errorMessage())
            // It may still be waiting for microphone permission. It must not start then.
            delete m_recorders.take(other);
    }
}

void DirectionRecordings::stop(const model::LineId &id) {
    if (AudioRecorder *recorder = m_recorders.value(id))
        recorder->stopRecording();
    Q_EMIT changed(id);
}

bool DirectionRecordings::isFinished() const {
    return std::none_of(m_recorders.cbegin(), m_recorders.cend(),
                        [](const AudioRecorder *recorder) { return recorder->hasUnfinishedTake(); });
}

void DirectionRecordings::finish() {
    m_isAllowed = false;
    for (AudioRecorder *recorder : std::as_const(m_recorders))
        if (recorder->hasUnfinishedTake())
            recorder->stopRecording();
}

AudioRecorder &DirectionRecordings::recorderOf(const model::LineId &id) {
    AudioRecorder *&recorder = m_recorders[id];
    if (recorder != nullptr)
        return *recorder;
    recorder = new AudioRecorder(m_parts, this);
    connect(recorder, &AudioRecorder::isRecordingChanged, this, [this, id, recorder = recorder] {
        Q_EMIT changed(id);
        if (recorder->isRecording())
            Q_EMIT attentionWanted(id);
    });
    connect(recorder, &AudioRecorder::recordingDurationChanged, this, [this, id] { Q_EMIT changed(id); });
    connect(recorder, &AudioRecorder::errorMessageChanged, this, [this, id] { tellError(id); });
    connect(recorder, &AudioRecorder::takeEnded, this, &DirectionRecordings::isFinishedChanged);
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
    dismissError(id);
    m_controller.directionAudio().installRecording(take, duration, id);
}

void DirectionRecordings::tellError(const model::LineId &id) {
    const bool hasError = !state(id).error.isEmpty();
    if (const QUrl kept = recorderOf(id).keptRecording(); !kept.isEmpty()) {
        // What was captured last may not be in the file.
        const auto duration = audio::AudioImporter::durationSeconds(kept);
        m_kept.keep({id, kept, duration ? *duration : state(id).duration, state(id).error});
    }
    if (hasError)
        m_shownErrors.insert(id, {m_parts.server.state() != audio::SoundServer::State::Ready, modeOf(id)});
    else
        m_shownErrors.remove(id);
    Q_EMIT changed(id);
    if (hasError)
        Q_EMIT attentionWanted(id);
}

void DirectionRecordings::dismissError(const model::LineId &id) {
    if (AudioRecorder *recorder = m_recorders.value(id))
        recorder->dismissError();
}

void DirectionRecordings::followServer() {
    const bool isBack = m_parts.server.state() == audio::SoundServer::State::Ready;
    const QList<model::LineId> ids = m_shownErrors.keys();
    for (const model::LineId &id : ids) {
        // Keep errors caused by the server's return itself.
        if (isBack && m_shownErrors.value(id).isServerFault)
            dismissError(id);
        else if (!isBack)
            m_shownErrors[id].isServerFault = true;
    }
}

void DirectionRecordings::followModes() {
    const QList<model::LineId> ids = m_shownErrors.keys();
    for (const model::LineId &id : ids)
        if (m_shownErrors.value(id).mode != modeOf(id))
            dismissError(id);
}

model::DirectionMode DirectionRecordings::modeOf(const model::LineId &id) const {
    const model::ProjectLine *line = m_controller.lines().find(id);
    return line == nullptr ? model::DirectionMode::Text : m_controller.project().effectiveSettings(*line).directionMode;
}

void DirectionRecordings::followLines() {
    const QList<model::LineId> ids = m_recorders.keys();
    for (const model::LineId &id : ids) {
        if (m_controller.lines().find(id) != nullptr)
            continue;
        if (m_recorders.value(id)->hasUnfinishedTake()) {
            m_recorders.value(id)->stopRecording();
            continue;
        }
        m_shownErrors.remove(id);
        m_recorders.take(id)->deleteLater();
    }
    const QList<model::LineId> waiting = m_takesOfGoneLines.keys();
    for (const model::LineId &id : waiting)
        if (m_controller.lines().find(id) != nullptr) {
            const FinishedTake take = m_takesOfGoneLines.take(id);
            attach(take.url, take.duration, id);
        }
}

} // namespace orlenta::controller
