#include "localvoices/voices/LineSpeaker.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "localvoices/engines/EspeakEngine.h"
#include "localvoices/engines/FliteEngine.h"
#include "localvoices/lexicon/SpokenText.h"
#include "localvoices/voices/VoiceCatalogue.h"
#include "localvoices/voices/VoiceShifter.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

constexpr double shortestSeconds = 0.1;
constexpr float loudestPeak = 0.7F;

using SpeakRuns = std::function<Sound(const std::vector<SpokenRun> &)>;

Sound speakSegments(const std::vector<SpokenSegment> &segments, int rate, const SpeakRuns &speakRuns) {
    Sound line{{}, rate};
    for (const SpokenSegment &segment : segments) {
        const Sound speech = speakRuns(segment.runs);
        line.frames.insert(line.frames.end(), speech.frames.begin(), speech.frames.end());
        const auto pause = static_cast<std::size_t>(segment.pauseAfter.count() * rate / 1000);
        line.frames.insert(line.frames.end(), pause, 0.0F);
    }
    return line;
}

bool isForFlite(const VoiceProfile &voice, const SpeechJob &job) {
    const bool english = job.languageCode.isEmpty() || job.languageCode.startsWith(u"en"_s);
    return voice.engine == Engine::Flite && english && FliteEngine::canRead(job.text);
}

base::Result<Sound, QString> fliteLine(const VoiceProfile &voice, const SpeechJob &job,
                                       const std::vector<SpokenSegment> &segments) {
    FliteEngine engine(voice.fliteVoice);
    if (!engine.isReady())
        return base::fail(u"The voice %1 is not installed."_s.arg(voice.name));
    const Sound line = speakSegments(
        segments, 16000, [&](const std::vector<SpokenRun> &runs) { return engine.speak(runs, job.settings); });
    return shifted(line, voice.shift);
}

base::Result<Sound, QString> espeakLine(const VoiceProfile &voice, const SpeechJob &job,
                                        const std::vector<SpokenSegment> &segments) {
    EspeakEngine engine;
    if (!engine.isReady())
        return base::fail(u"espeak-ng or its data are not installed."_s);
    // A language that espeak-ng lacks is ignored, as a model ignores one that it can't speak.
    const bool own = job.languageCode.isEmpty() || job.languageCode == voice.language;
    if ((own || !engine.selectVoice(job.languageCode.toLatin1(), voice.espeakVariant)) &&
        !engine.selectVoice(voice.espeakLanguage, voice.espeakVariant))
        return base::fail(u"The voice %1 is not installed."_s.arg(voice.name));
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

base::Result<Sound, QString> spokenLine(const SpeechJob &job) {
    const std::optional<VoiceProfile> voice = findVoice(job.voiceId);
    if (!voice)
        return base::fail(u"There is no voice %1."_s.arg(job.voiceId));
    const std::vector<SpokenSegment> segments = readSpokenText(job.text, job.rules, job.phonemeRules);
    base::Result<Sound, QString> line =
        isForFlite(*voice, job) ? fliteLine(*voice, job, segments) : espeakLine(*voice, job, segments);
    if (!line)
        return line;
    Sound sound = std::move(line).value();
    const auto shortest = static_cast<std::size_t>(shortestSeconds * sound.rate);
    sound.frames.resize(std::max(sound.frames.size(), shortest), 0.0F);
    level(sound);
    return sound;
}

} // namespace orlenta::localvoices
