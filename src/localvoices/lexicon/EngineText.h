#pragma once

#include <vector>

#include <QtCore/QString>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

/// Limit for the sounds in one word.
constexpr std::size_t mostPhonesOfWord = 40;
/// Limit for one piece of text, in bytes of UTF-8.
constexpr qsizetype longestPiece = 500;

/// Makes text safe for the engines, which copy it into fixed-size buffers and obey embedded commands. Control
/// characters and square brackets become spaces, a run of punctuation is cut to four, and an abbreviation like "a.b.c."
/// keeps its first ten dots. Words are split after 40 characters, 15 digits, or 16 changes between letters, digits and
/// punctuation.
[[nodiscard]] QString engineText(const QString &text);

/// Splits runs into pieces for the engines to speak one by one, preferably between sentences, else after a comma or
/// space. Long runs of sounds are split into words.
[[nodiscard]] std::vector<std::vector<SpokenRun>> enginePieces(const std::vector<SpokenRun> &runs);

} // namespace orlenta::localvoices
