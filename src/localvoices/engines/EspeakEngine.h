#pragma once

#include "localvoices/engines/Sound.h"
#include "localvoices/lexicon/SpokenText.h"
#include "localvoices/protocol/SpeechSettings.h"

namespace orlenta::localvoices {

/// Speaks with espeak-ng. One object in a process's life: the library can't be initialised a second time, and keeps its
/// state in globals. Any one thread.
class EspeakEngine final {
public:
    EspeakEngine();
    EspeakEngine(const EspeakEngine &) = delete;
    EspeakEngine &operator=(const EspeakEngine &) = delete;

    /// Where the library finds its voices and dictionaries.
    [[nodiscard]] static QByteArray dataFolder();

    /// Whether the library and its data were found.
    [[nodiscard]] bool isReady() const { return m_rate > 0; }
    [[nodiscard]] int rate() const { return m_rate; }

    /// Chooses a voice such as "en-us" with the variant "f3". False when espeak-ng doesn't have it.
    [[nodiscard]] bool selectVoice(const QByteArray &language, const QByteArray &variant);

    /// The runs, which are one of `enginePieces`, as one utterance at `rate()`. The pace is kept between 80 and 450
    /// words a minute; `paceOf` tells what was kept of the speed that was asked for.
    [[nodiscard]] Sound speak(const std::vector<SpokenRun> &runs, const SpeechSettings &settings);
    [[nodiscard]] static double paceOf(const SpeechSettings &settings);

private:
    int m_rate = 0;
};

} // namespace orlenta::localvoices
