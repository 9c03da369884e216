#pragma once

#include "localvoices/engines/Sound.h"
#include "localvoices/lexicon/SpokenText.h"
#include "localvoices/protocol/SpeechSettings.h"

namespace orlenta::localvoices {

/// Speaks with espeak-ng. Create only one per process: the library can't be initialised twice and keeps its state in
/// globals. Any one thread.
class EspeakEngine final {
public:
    EspeakEngine();
    EspeakEngine(const EspeakEngine &) = delete;
    EspeakEngine &operator=(const EspeakEngine &) = delete;

    /// The folder with voices and dictionaries.
    [[nodiscard]] static QByteArray dataFolder();

    /// Whether the library and its data were found.
    [[nodiscard]] bool isReady() const { return m_rate > 0; }
    [[nodiscard]] int rate() const { return m_rate; }

    /// Selects a voice such as "en-us" with the variant "f3". False if espeak-ng doesn't have it.
    [[nodiscard]] bool selectVoice(const QByteArray &language, const QByteArray &variant);

    /// Speaks one of `enginePieces` as one utterance, at `rate()`. The pace is limited to 80 to 450 words per minute;
    /// `paceOf` returns the resulting speed.
    [[nodiscard]] Sound speak(const std::vector<SpokenRun> &runs, const SpeechSettings &settings);
    [[nodiscard]] static double paceOf(const SpeechSettings &settings);

private:
    int m_rate = 0;
};

} // namespace orlenta::localvoices
