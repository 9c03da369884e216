#pragma once

#include <chrono>
#include <vector>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

/// A stretch of speech and the silence that follows it.
struct SpokenSegment {
    std::vector<SpokenRun> runs;
    std::chrono::milliseconds pauseAfter{0};
};

/// Reads a line as the speech service's clients write it.
///
/// `<break time="1.5s" />` is a pause of at most three seconds, and of ten minutes in all; `[pause]`, `[short pause]`
/// and
/// `[long pause]` are pauses too. Every other text in square brackets directs an actor and isn't spoken.
/// `<phoneme alphabet="..." ph="...">word</phoneme>` gives a word's sounds; of other elements only what they hold is
/// read.
[[nodiscard]] std::vector<SpokenSegment>
readSpokenText(const QString &text, const std::vector<PronunciationRule> &rules, PhonemeRules phonemeRules);

} // namespace orlenta::localvoices
