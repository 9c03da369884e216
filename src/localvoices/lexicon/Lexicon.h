#pragma once

#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/lexicon/Phone.h"

namespace orlenta::localvoices {

/// The longest text of a phoneme element, and of a word or an alias, in characters. A word's sounds and a phrase are
/// far below; each occurrence of a word is replaced by them, so they bound what a line can grow to.
constexpr qsizetype longestPhonemes = 400;
constexpr qsizetype longestRuleText = 1000;

/// What is said for a word: other text in its place, or its sounds. One of the two is empty.
struct PronunciationRule {
    QString word;
    QString alias;
    std::vector<Phone> phones;
};

/// Whether a model follows the rules that give sounds; those that give other text are followed by every model.
enum class PhonemeRules { Followed, Skipped };

/// A run of text to be read, or of sounds to be made. `text` holds the word that the sounds stand for.
struct SpokenRun {
    QString text;
    std::vector<Phone> phones;
};

/// Reads a W3C pronunciation lexicon (PLS 1.0): each grapheme of a lexeme with the lexeme's first alias or phoneme
/// element is a rule, in the document's order. The alphabets are "ipa" and the ARPABET names ("x-arpabet",
/// "cmu-arpabet"). A text past the limits above makes the document unreadable. The error says what is wrong with it.
[[nodiscard]] base::Result<std::vector<PronunciationRule>, QString> readLexicon(const QByteArray &document);

/// Reads sounds in an alphabet as a lexicon names it; none for an alphabet that isn't known, and for more than
/// `longestPhonemes` characters.
[[nodiscard]] std::vector<Phone> phonesIn(const QString &alphabet, const QString &text);

/// Splits text into runs by the rules. A word matches in its own case and not inside a longer word; where two rules
/// match at one place the earlier wins. What a rule puts in isn't searched again.
[[nodiscard]] std::vector<SpokenRun> applyRules(const QString &text, const std::vector<PronunciationRule> &rules,
                                                PhonemeRules phonemeRules);

} // namespace orlenta::localvoices
