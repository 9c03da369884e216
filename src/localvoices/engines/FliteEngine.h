#pragma once

#include <deque>
#include <vector>

#include "localvoices/engines/Sound.h"
#include "localvoices/lexicon/SpokenText.h"
#include "localvoices/protocol/SpeechSettings.h"

struct cst_voice_struct;

namespace orlenta::localvoices {

/// Speaks English with one of Flite's voices. Any one thread; one at a time, because the voices share a lexicon.
class FliteEngine final {
public:
    /// `voice` is "slt", "rms", "awb" or "kal16".
    explicit FliteEngine(const QByteArray &voice);
    FliteEngine(const FliteEngine &) = delete;
    FliteEngine &operator=(const FliteEngine &) = delete;

    [[nodiscard]] bool isReady() const { return m_voice != nullptr; }

    /// Speaks one of `enginePieces` as one utterance, at the voice's own rate and 0.25 to 4 times its pace.
    [[nodiscard]] Sound speak(const std::vector<SpokenRun> &runs, const SpeechSettings &settings);

    /// Whether the text has anything that can be written in plain Latin letters.
    [[nodiscard]] static bool canRead(const QString &text);

private:
    [[nodiscard]] QByteArray inputOf(const std::vector<SpokenRun> &runs);
    [[nodiscard]] QByteArray addWord(const std::vector<Phone> &phones);

    cst_voice_struct *m_voice = nullptr;
    float m_ownStretch = 1.0F;
    float m_ownMelody = 0.0F;
    // Owns the words added to the lexicon, which only points to them.
    std::deque<QByteArray> m_strings;
    std::deque<std::vector<char *>> m_entries;
    std::vector<char **> m_addenda;
    int m_words = 0;
};

} // namespace orlenta::localvoices
