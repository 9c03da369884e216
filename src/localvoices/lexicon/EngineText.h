#pragma once

#include <vector>

#include <QtCore/QString>

#include "localvoices/lexicon/Lexicon.h"

namespace orlenta::localvoices {

/// The most sounds that an engine is given as one word.
constexpr std::size_t mostPhonesOfWord = 40;
/// The longest text, in bytes of UTF-8, that an engine is given at once.
constexpr qsizetype longestPiece = 500;

/// The text without what the engines' fixed buffers can't hold or what commands them. Control characters and brackets
/// become blanks; a run of signs ends after its fourth; a chain of letters with dots loses them after the tenth. A
/// blank ends a word of 40 characters, of 15 digits, or of sixteen runs of letters, digits and signs.
[[nodiscard]] QString engineText(const QString &text);

/// The runs in pieces that an engine can speak one after the other, cut where a sentence ends if one does, else at a
/// comma or a blank. Sounds are given in words of at most `mostPhonesOfWord`.
[[nodiscard]] std::vector<std::vector<SpokenRun>> enginePieces(const std::vector<SpokenRun> &runs);

} // namespace orlenta::localvoices
