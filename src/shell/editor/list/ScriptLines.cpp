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
#include "controller/takes/TakeFreshness.h"
#include "shell/controls/CutTextMark.h"
#include "shell/editor/list/RowDensities.h"
#include "shell/editor/list/TakeTimeScale.h"

using namespace Qt::StringLiterals;

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

ScriptLines::ScriptLines(controller::ProjectSession &session, const RowDensities &densities, TakeTimeScale &timeScale)
    : m_controller(session.controller()), m_playback(session.playback()), m_recordings(session.recordings()),
      m_generator(session.generator()), m_densities(densities), m_timeScale(timeScale) {}

const model::LineIdList &ScriptLines::lineIds() const {
    return m_controller.scriptLineIds();
}

RowDensity ScriptLines::density() const {
    return m_densities.current();
}

LineOutline ScriptLines::outline(const model::LineId &id) const {
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return {};
    return {CutTextMark::shownUnits(line->text.size()),
            m_controller.runtime().hasGeneratedAudio(id) || !line->takes.isEmpty(),
            isVoiceDirected(m_controller, *line), !line->notes.isEmpty()};
}

LineRowContent ScriptLines::content(const model::LineId &id, qsizetype index) const {
    LineRowContent content;
    content.id = id;
    content.number = index + 1;
    const model::ProjectLine *line = m_controller.lines().find(id);
    if (line == nullptr)
        return content;
    content.density = m_densities.current();
    addSelection(content, index);
    content.notes = line->notes;
    content.takes = takes(*line);
    content.header = header(*line);
    content.direction = direction(*line);
    content.header.isRecording = content.direction && content.direction->isRecording;
    content.header.isPlaying = m_playback.isPlaying() && m_playback.currentlyPlayingLineID() == id;
    addStatus(content, *line);
    const controller::Selection &selection = m_controller.selection();
    content.text.text = line->text;
    content.text.isEditing = selection.editingLineId() == id;
    content.text.selection = content.text.isEditing ? selection.textSelectionRange() : std::nullopt;
    content.text.typingFlushVersion = m_controller.state().typingFlushVersion;
    return content;
}

void ScriptLines::addSelection(LineRowContent &content, qsizetype index) const {
    const controller::Selection &selection = m_controller.selection();
    const QSet<model::LineId> &selected = selection.selectedLineIds();
    content.isSelected = selected.contains(content.id);
    if (!content.isSelected)
        return;
    content.isCurrent = selection.selectionFocusId() == content.id || selection.singleSelectedLineId() == content.id;
    const model::LineIdList &ids = m_controller.scriptLineIds();
    // The list may still show the lines of another tab.
    const auto isSelected = [&](qsizetype place) {
        return place >= 0 && place < ids.size() && selected.contains(ids.at(place));
    };
    content.joinsAbove = isSelected(index - 1);
    content.joinsBelow = isSelected(index + 1);
}

void ScriptLines::addStatus(LineRowContent &content, const model::ProjectLine &line) const {
    const auto set = [&content](RowStatus status, const QString &words) {
        content.status = status;
        content.statusWords = words;
    };
    const TakesContent &takes = content.takes;
    if (content.header.generation == RowGeneration::Generating)
        return set(RowStatus::Generating, u"Generating"_s);
    if (content.header.generation == RowGeneration::Waiting)
        return set(RowStatus::Waiting, u"Waiting"_s);
    if (content.header.generation == RowGeneration::NoVoice)
        return set(RowStatus::NoVoice, u"No voice"_s);
    if (takes.active < 0)
        return set(RowStatus::NotGenerated, takes.count > 0 ? u"No take chosen"_s : u"No audio yet"_s);
    if (!takes.audio)
        return set(RowStatus::FileMissing, u"The audio file is missing"_s);
    switch (controller::changeSinceTake(m_controller.project(), line, line.takes.at(takes.active))) {
    case controller::TakeChange::None:
        return;
    case controller::TakeChange::Text:
        return set(RowStatus::Stale, u"Text changed"_s);
    case controller::TakeChange::Voice:
        return set(RowStatus::Stale, u"Voice changed"_s);
    case controller::TakeChange::Settings:
        return set(RowStatus::Stale, u"Settings changed"_s);
    }
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
    if (!state.generatedAudioURL.isEmpty()) {
        takes.audio =
            audio(line.lineId, controller::AudioKind::Generated, state.generatedAudioURL, state.waveformSamples);
        m_timeScale.setSeconds(line.lineId, takes.audio->seconds);
        takes.audio->laneSeconds = m_timeScale.laneSeconds();
    }
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
    const auto length = LineDurations::duration(file, context, signal, [signal] { signal->bump(); });
    audio.duration = LineDurations::text(length);
    audio.exactDuration = LineDurations::exactText(length);
    audio.seconds = length ? length->count() : 0.0;
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
