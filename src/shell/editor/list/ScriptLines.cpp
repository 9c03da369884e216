#include "shell/editor/list/ScriptLines.h"

#include <chrono>

#include <QtCore/QLocale>

#include "audio/files/AudioDurations.h"
#include "audio/playback/PlaybackController.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/direction/DirectionRecordings.h"
#include "controller/generation/GenerationPlan.h"
#include "controller/generation/LineGenerator.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::shell {
namespace {

using LineDurations = audio::ScriptLineAudioDurationReader;

bool isVoiceDirected(const controller::ProjectController &controller, const model::ProjectLine &line) {
    const model::DirectionMode mode =
        line.settings ? line.settings->directionMode : controller.project().effectiveSettings(line).directionMode;
    return mode == model::DirectionMode::Voice;
}

QString overrunText(const controller::TextOverrun &overrun) {
    const QLocale plain(QLocale::English);
    const QString text =
        overrun.isAtLeast ? QStringLiteral("Over %1 of %2 characters") : QStringLiteral("%1 of %2 characters");
    return text.arg(plain.toString(overrun.count), plain.toString(overrun.limit));
}

} // namespace

ScriptLines::ScriptLines(controller::ProjectSession &session)
    : m_controller(session.controller()), m_playback(session.playback()), m_recordings(session.recordings()),
      m_generator(session.generator()) {}

const model::LineIdList &ScriptLines::lineIds() const {
    return m_controller.scriptLineIds();
}

LineOutline ScriptLines::outline(const model::LineId &id) const {
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return {};
    return {line->text.size(), m_controller.runtime().hasGeneratedAudio(id) || !line->takes.isEmpty(),
            isVoiceDirected(m_controller, *line), !line->notes.isEmpty()};
}

LineRowContent ScriptLines::content(const model::LineId &id, qsizetype index) const {
    LineRowContent content;
    content.id = id;
    content.number = index + 1;
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return content;
    const controller::Selection &selection = m_controller.selection();
    content.isSelected = selection.selectedLineIds().contains(id);
    content.isCurrent =
        content.isSelected && (selection.selectionFocusId() == id || selection.singleSelectedLineId() == id);
    content.notes = line->notes;
    content.takes = takes(*line);
    content.header = header(*line);
    content.direction = direction(*line);
    content.text.text = line->text;
    content.text.isEditing = selection.editingLineId() == id;
    content.text.selection = content.text.isEditing ? selection.textSelectionRange() : std::nullopt;
    content.text.typingFlushVersion = m_controller.state().typingFlushVersion;
    return content;
}

LineHeaderContent ScriptLines::header(const model::ProjectLine &line) const {
    LineHeaderContent header;
    if (const model::ProjectVoice *voice = m_controller.voices().projectVoiceFor(line.lineId)) {
        header.castName = voice->castName;
        header.stripe = QColor(voice->colorStripeHex);
        header.generation = m_generator.queue().holds(line.lineId) ? RowGeneration::Waiting : RowGeneration::Ready;
    }
    if (const auto overrun = controller::textOverrun(m_controller, line))
        header.overrun = overrunText(*overrun);
    if (m_controller.runtime().state(line.lineId).isGenerating)
        header.generation = RowGeneration::Generating;
    header.isSpoken = controller::generationKind(m_controller, line) == controller::GenerationKind::Regenerate;
    header.isVoiceDirected = isVoiceDirected(m_controller, line);
    header.hasNotes = !line.notes.isEmpty();
    return header;
}

TakesContent ScriptLines::takes(const model::ProjectLine &line) const {
    TakesContent takes;
    takes.count = line.takes.size();
    const controller::LineRuntimeState state = m_controller.runtime().state(line.lineId);
    if (!state.generatedAudioURL.isEmpty())
        takes.audio =
            audio(line.lineId, controller::AudioKind::Generated, state.generatedAudioURL, state.waveformSamples);
    takes.active = m_controller.takes().indexInUse(line);
    return takes;
}

std::optional<DirectionContent> ScriptLines::direction(const model::ProjectLine &line) const {
    const controller::DirectionRecordings::State recording = m_recordings.state(line.lineId);
    if (!isVoiceDirected(m_controller, line) && !recording.isRecording && recording.error.isEmpty())
        return {};
    DirectionContent direction;
    direction.isRecording = recording.isRecording;
    direction.recordingTime = LineDurations::text(std::chrono::duration<double>(recording.duration));
    direction.error = recording.error;
    const controller::LineRuntimeState state = m_controller.runtime().state(line.lineId);
    if (!state.directionAudioURL.isEmpty())
        direction.audio = audio(line.lineId, controller::AudioKind::SourceRecording, state.directionAudioURL,
                                state.directionWaveformSamples);
    return direction;
}

AudioContent ScriptLines::audio(const model::LineId &id, controller::AudioKind kind, const QUrl &file,
                                const QList<float> &peaks) const {
    const bool isGenerated = kind == controller::AudioKind::Generated;
    AudioContent audio;
    audio.waveform = peaks;
    if (peaks.isEmpty())
        m_controller.waveforms().request(id, kind);
    // Once the duration is known, the row that shows the line reads its content again.
    controller::LineRuntimeSignal *signal = m_controller.runtime().signalFor(id);
    const QString context =
        isGenerated ? QStringLiteral("ScriptLineView.takeDuration") : QStringLiteral("ScriptLineView.audioDuration");
    const auto duration = LineDurations::duration(file, context, signal, [signal] { signal->bump(); });
    audio.duration = LineDurations::text(duration);
    audio.exactDuration = LineDurations::exactText(duration);
    if (isGenerated ? m_playback.isCurrentGenerated(id) : m_playback.isCurrentSource(id)) {
        audio.playback = m_playback.isPlaying() ? RowPlayback::Playing : RowPlayback::Current;
        audio.progress = m_playheadAudio == file ? m_playback.playbackProgress() : 0.0;
    }
    return audio;
}

QMetaObject::Connection ScriptLines::watch(const model::LineId &id, QObject *row,
                                           const std::function<void()> &changed) {
    return QObject::connect(m_controller.runtime().signalFor(id), &controller::LineRuntimeSignal::versionChanged, row,
                            changed);
}

} // namespace orlenta::shell
