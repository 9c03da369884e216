#include "localvoices/voices/LineSpeaker.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "localvoices/engines/EspeakEngine.h"
#include "localvoices/engines/FliteEngine.h"
#include "localvoices/engines/SpokenLanguage.h"
#include "localvoices/lexicon/EngineText.h"
#include "localvoices/lexicon/SpokenText.h"
#include "localvoices/voices/VoiceCatalogue.h"
#include "localvoices/voices/VoiceShifter.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr double shortestSeconds = 0.1;
constexpr float loudestPeak = 0.7F;

using SpeakRuns = std::function<Sound(const std::vector<SpokenRun> &)>;

using SpokenSound = base::Result<Sound, JobFailure>;

base::Failure<JobFailure> inputFailure(const QString &sentence) {
    return base::fail(JobFailure{JobFailure::Cause::Input, sentence});
}

base::Failure<JobFailure> engineFailure(const QString &sentence) {
    return base::fail(JobFailure{JobFailure::Cause::Engine, sentence});
}

SpokenSound speakSegments(const std::vector<SpokenSegment> &segments, int rate, const SpeakRuns &speakRuns) {
    Sound line{{}, rate};
    for (const SpokenSegment &segment : segments) {
        for (const std::vector<SpokenRun> &piece : enginePieces(segment.runs)) {
            const Sound speech = speakRuns(piece);
            line.frames.insert(line.frames.end(), speech.frames.begin(), speech.frames.end());
            if (line.seconds() > longestSpeechSeconds)
                return inputFailure(u"The speech would be longer than an hour."_s);
        }
        const auto pause = static_cast<std::size_t>(segment.pauseAfter.count() * rate / 1000);
        line.frames.insert(line.frames.end(), pause, 0.0F);
    }
    return line;
}

std::size_t characterCount(const std::vector<SpokenSegment> &segments) {
    std::size_t count = 0;
    for (const SpokenSegment &segment : segments)
        for (const SpokenRun &run : segment.runs)
            count += run.phones.empty() ? static_cast<std::size_t>(run.text.size()) : run.phones.size();
    return count;
}

bool isForFlite(const VoiceProfile &voice, const SpeechJob &job) {
    const bool english = job.languageCode.isEmpty() || job.languageCode.startsWith(u"en"_s);
    return voice.engine == Engine::Flite && english && FliteEngine::canRead(job.text);
}

SpokenSound fliteLine(const VoiceProfile &voice, const SpeechJob &job, const std::vector<SpokenSegment> &segments) {
    FliteEngine engine(voice.fliteVoice);
    if (!engine.isReady())
        return engineFailure(u"The voice %1 is not installed."_s.arg(voice.name));
    const SpokenSound line = speakSegments(
        segments, 16000, [&](const std::vector<SpokenRun> &runs) { return engine.speak(runs, job.settings); });
    if (!line)
        return line;
    return shifted(*line, voice.shift);
}

SpokenSound espeakLine(const VoiceProfile &voice, const SpeechJob &job, const std::vector<SpokenSegment> &segments) {
    EspeakEngine engine;
    if (!engine.isReady())
        return engineFailure(u"espeak-ng or its data are not installed."_s);
    // Ignore unsupported languages, as the service's models do.
    const QByteArray other = job.languageCode == voice.language ? QByteArray() : espeakLanguage(job.languageCode);
    if ((other.isEmpty() || !engine.selectVoice(other, voice.espeakVariant)) &&
        !engine.selectVoice(voice.espeakLanguage, voice.espeakVariant))
        return engineFailure(u"The voice %1 is not installed."_s.arg(voice.name));
    const double rest = job.settings.speed / EspeakEngine::paceOf(job.settings);
    return speakSegments(segments, engine.rate(), [&](const std::vector<SpokenRun> &runs) {
        return paced(engine.speak(runs, job.settings), rest);
    });
}

void level(Sound &sound) {
    float peak = 0;
    for (const float frame : sound.frames)
        peak = std::max(peak, std::abs(frame));
    if (peak <= 0)
        return;
    for (float &frame : sound.frames)
        frame *= loudestPeak / peak;
}

} // namespace

SpokenSound spokenLine(const SpeechJob &job) {
    const std::optional<VoiceProfile> voice = findVoice(job.voiceId);
    if (!voice)
        return engineFailure(u"There is no voice %1."_s.arg(job.voiceId));
    const std::vector<SpokenSegment> segments = readSpokenText(job.text, job.rules, job.phonemeRules);
    if (characterCount(segments) > mostSpokenCharacters)
        return inputFailure(
            u"With its pronunciations the text is longer than %1 characters."_s.arg(mostSpokenCharacters));
    SpokenSound line = isForFlite(*voice, job) ? fliteLine(*voice, job, segments) : espeakLine(*voice, job, segments);
    if (!line)
        return line;
    Sound sound = std::move(line).value();
    const auto shortest = static_cast<std::size_t>(shortestSeconds * sound.rate);
    sound.frames.resize(std::max(sound.frames.size(), shortest), 0.0F);
    level(sound);
    return sound;
}

} // namespace orlenta::localvoices
