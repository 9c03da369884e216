#include "localvoices/engines/EspeakEngine.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <espeak-ng/espeak_ng.h>
#include <espeak-ng/speak_lib.h>

#include "localvoices/lexicon/EngineText.h"

namespace orlenta::localvoices {

namespace {

constexpr double usualWordsPerMinute = 175.0;
constexpr double usualRange = 50.0;

// espeak-ng passes no usable context to its callback.
std::vector<float> *espeakReceiver = nullptr;

int receiveEspeakFrames(short *frames, int count, espeak_EVENT *) {
    if (frames == nullptr || espeakReceiver == nullptr)
        return 0;
    const std::size_t before = espeakReceiver->size();
    espeakReceiver->resize(before + static_cast<std::size_t>(count));
    std::transform(frames, frames + count, espeakReceiver->begin() + static_cast<std::ptrdiff_t>(before),
                   [](short frame) { return static_cast<float>(frame) / 32768.0F; });
    return 0;
}

/// Breath is noise. espeak-ng 1.51 takes it from rand(), 1.52 from its own generator, which it seeds with the time.
void seedNoise(std::uint32_t seed) {
#ifdef ORLENTA_ESPEAK_NG_HAS_SEED
    espeak_ng_SetRandSeed(static_cast<long>(seed));
#else
    std::srand(seed);
#endif
}

QByteArray espeakInput(const std::vector<SpokenRun> &runs) {
    QByteArray input;
    for (const SpokenRun &run : runs) {
        if (!run.phones.empty()) {
            input += " [[" + espeakMnemonics(run.phones) + "]] ";
            continue;
        }
        input += engineText(run.text).toUtf8();
    }
    return input.trimmed();
}

} // namespace

EspeakEngine::EspeakEngine() {
    m_rate = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, 0, nullptr, espeakINITIALIZE_DONT_EXIT);
    if (isReady())
        espeak_SetSynthCallback(receiveEspeakFrames);
}

QByteArray EspeakEngine::dataFolder() {
    const char *path = nullptr;
    espeak_ng_InitializePath(nullptr);
    espeak_Info(&path);
    return path;
}

bool EspeakEngine::selectVoice(const QByteArray &language, const QByteArray &variant) {
    return espeak_SetVoiceByName((language + '+' + variant).constData()) == EE_OK;
}

double EspeakEngine::paceOf(const SpeechSettings &settings) {
    return std::clamp(settings.speed, 80.0 / usualWordsPerMinute, 450.0 / usualWordsPerMinute);
}

Sound EspeakEngine::speak(const std::vector<SpokenRun> &runs, const SpeechSettings &settings) {
    Sound sound{{}, m_rate};
    const QByteArray input = espeakInput(runs);
    if (input.isEmpty())
        return sound;
    seedNoise(settings.seed);
    espeak_SetParameter(espeakRATE, static_cast<int>(std::lround(usualWordsPerMinute * paceOf(settings))), 0);
    espeak_SetParameter(espeakRANGE, static_cast<int>(std::lround(std::min(usualRange * settings.melody(), 100.0))), 0);
    espeakReceiver = &sound.frames;
    espeak_Synth(input.constData(), static_cast<size_t>(input.size()) + 1, 0, POS_CHARACTER, 0,
                 espeakCHARS_UTF8 | espeakPHONEMES, nullptr, nullptr);
    espeak_Synchronize();
    espeakReceiver = nullptr;
    return sound;
}

} // namespace orlenta::localvoices
