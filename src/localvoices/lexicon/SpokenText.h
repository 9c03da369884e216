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

/// Parses a line with the speech service's markup.
///
/// `<break time="1.5s" />` is a pause of up to three seconds, and up to ten minutes per line; `[pause]`, `[short
/// pause]` and `[long pause]` are pauses too. Any other text in square brackets is a direction and isn't spoken.
/// `<phoneme alphabet="..." ph="...">word</phoneme>` gives a word's sounds. Other elements are replaced by their
/// content.
[[nodiscard]] std::vector<SpokenSegment>
readSpokenText(const QString &text, const std::vector<PronunciationRule> &rules, PhonemeRules phonemeRules);

} // namespace orlenta::localvoices
