#include "shell/editor/ScriptLines.h"

#include <chrono>

#include <QtCore/QDateTime>
#include <QtCore/QLocale>

#include "audio/files/AudioDurations.h"
#include "audio/playback/PlaybackController.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/direction/DirectionRecordings.h"
#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "shell/editor/LineRow.h"

namespace orlenta::shell {
namespace {

using LineDurations = audio::ScriptLineAudioDurationReader;

bool isVoiceDirected(const controller::ProjectController &controller, const model::ProjectLine &line) {
    const model::DirectionMode mode =
        line.settings ? line.settings->directionMode : controller.project().effectiveSettings(line).directionMode;
    return mode == model::DirectionMode::Voice;
}

} // namespace

ScriptLines::ScriptLines(controller::ProjectSession &session)
    : m_controller(session.controller()), m_playback(session.playback()), m_recordings(session.recordings()) {}

const model::LineIdList &ScriptLines::lineIds() const {
    return m_controller.scriptLineIds();
}

ScriptListSource::Outline ScriptLines::outline(const model::LineId &id) const {
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
    content.text = line->text;
    if (const model::ProjectVoice *voice = m_controller.voices().projectVoiceFor(id)) {
        content.castName = voice->castName;
        content.stripe = QColor(voice->colorStripeHex);
        content.generation = RowGeneration::Ready;
    }
    const controller::Selection &selection = m_controller.selection();
    content.isSelected = selection.selectedLineIds().contains(id);
    content.isCurrent =
        content.isSelected && (selection.selectionFocusId() == id || selection.singleSelectedLineId() == id);
    content.isEditing = selection.editingLineId() == id;
    content.textSelection = content.isEditing ? selection.textSelectionRange() : std::nullopt;
    content.notes = line->notes;
    content.isVoiceDirected = isVoiceDirected(m_controller, *line);
    content.typingFlushVersion = m_controller.state().typingFlushVersion;
    fillAudio(content);
    fillDirection(content);
    fillTakes(content);
    if (content.hasAudio)
        fillPlayback(content);
    return content;
}

void ScriptLines::fillAudio(LineRowContent &content) const {
    const controller::LineRuntimeState state = m_controller.runtime().state(content.id);
    if (state.isGenerating)
        content.generation = RowGeneration::Generating;
    content.hasAudio = !state.generatedAudioURL.isEmpty();
    if (!content.hasAudio)
        return;
    content.waveform = state.waveformSamples;
    if (content.waveform.isEmpty())
        m_controller.waveforms().request(content.id, controller::AudioKind::Generated);
    content.duration = durationText(content.id, state.generatedAudioURL, QStringLiteral("ScriptLineView.takeDuration"));
}

void ScriptLines::fillTakes(LineRowContent &content) const {
    const model::ProjectLine *line = m_controller.lines().find(content.id);
    // Without audio in use the last take is not in use either, unless it is named and its file is missing.
    const model::Take *active = content.hasAudio || line->activeTakeId ? line->activeTake() : nullptr;
    content.isSpoken = content.hasAudio || (!line->takes.isEmpty() && !m_controller.media().audioURL(*line).isEmpty());
    for (qsizetype index = 0; index < line->takes.size(); ++index) {
        const model::Take &take = line->takes.at(index);
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(take.generatedAt.time_since_epoch());
        const QDateTime when = QDateTime::fromSecsSinceEpoch(seconds.count());
        QString detail = QLocale().toString(when, QLocale::ShortFormat);
        if (const model::ProjectVoice *voice = m_controller.project().findVoice(take.voiceId))
            detail += QStringLiteral("  ·  %1").arg(voice->castName);
        content.takes.append({take.id, QStringLiteral("Take %1").arg(index + 1), detail});
        if (active != nullptr && active->id == take.id)
            content.activeTake = index;
    }
}

void ScriptLines::fillDirection(LineRowContent &content) const {
    const controller::DirectionRecordings::State recording = m_recordings.state(content.id);
    if (!content.isVoiceDirected && !recording.isRecording && recording.error.isEmpty())
        return;
    const controller::LineRuntimeState state = m_controller.runtime().state(content.id);
    DirectionContent &direction = content.direction.emplace();
    direction.number = content.number;
    direction.isRecording = recording.isRecording;
    direction.recordingTime = LineDurations::text(std::chrono::duration<double>(recording.duration));
    direction.error = recording.error;
    direction.hasAudio = !state.directionAudioURL.isEmpty();
    if (!direction.hasAudio)
        return;
    direction.waveform = state.directionWaveformSamples;
    if (direction.waveform.isEmpty())
        m_controller.waveforms().request(content.id, controller::AudioKind::SourceRecording);
    direction.duration =
        durationText(content.id, state.directionAudioURL, QStringLiteral("ScriptLineView.audioDuration"));
    if (m_playback.isCurrentSource(content.id)) {
        direction.playback = m_playback.isPlaying() ? RowPlayback::Playing : RowPlayback::Current;
        direction.progress = m_heard == state.directionAudioURL ? m_playback.playbackProgress() : 0.0;
    }
}

void ScriptLines::fillPlayback(LineRowContent &content) const {
    if (!m_playback.isCurrentGenerated(content.id))
        return;
    content.playback = m_playback.isPlaying() ? RowPlayback::Playing : RowPlayback::Current;
    const QUrl file = m_controller.runtime().state(content.id).generatedAudioURL;
    content.progress = m_heard == file ? m_playback.playbackProgress() : 0.0;
}

QString ScriptLines::durationText(const model::LineId &id, const QUrl &file, const QString &context) const {
    // Whichever row shows the line by then asks for its content again.
    controller::LineRuntimeSignal *signal = m_controller.runtime().signalFor(id);
    return LineDurations::text(LineDurations::duration(file, context, signal, [signal] { signal->bump(); }));
}

QMetaObject::Connection ScriptLines::watch(const model::LineId &id, LineRow *row) {
    return QObject::connect(m_controller.runtime().signalFor(id), &controller::LineRuntimeSignal::versionChanged, row,
                            &LineRow::lineChanged);
}

} // namespace orlenta::shell
