#pragma once

#include <deque>
#include <vector>

#include "localvoices/engines/Sound.h"
#include "localvoices/lexicon/SpokenText.h"
#include "localvoices/protocol/SpeechSettings.h"

struct cst_voice_struct;

namespace orlenta::localvoices {

/// Speaks English with one of Flite's voices. Any one thread; one object at a time, as the voices share a lexicon.
class FliteEngine final {
public:
    /// `voice` is "slt", "rms", "awb" or "kal16".
    explicit FliteEngine(const QByteArray &voice);
    FliteEngine(const FliteEngine &) = delete;
    FliteEngine &operator=(const FliteEngine &) = delete;

    [[nodiscard]] bool isReady() const { return m_voice != nullptr; }

    /// The runs, which are one of `enginePieces`, as one utterance at the voice's own rate. In any pace from a quarter
    /// to four times its own.
    [[nodiscard]] Sound speak(const std::vector<SpokenRun> &runs, const SpeechSettings &settings);

    /// Whether anything is left of the text when it is written in plain Latin letters.
    [[nodiscard]] static bool canRead(const QString &text);

private:
    [[nodiscard]] QByteArray inputOf(const std::vector<SpokenRun> &runs);
    [[nodiscard]] QByteArray addWord(const std::vector<Phone> &phones);

    cst_voice_struct *m_voice = nullptr;
    float m_ownStretch = 1.0F;
    float m_ownMelody = 0.0F;
    // What the lexicon points to once words have been added to it.
    std::deque<QByteArray> m_strings;
    std::deque<std::vector<char *>> m_entries;
    std::vector<char **> m_addenda;
    int m_words = 0;
};

} // namespace orlenta::localvoices
