#pragma once

#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"
#include "localvoices/lexicon/Phone.h"

namespace orlenta::localvoices {

/// Limits in characters for a phoneme element, and for a word or an alias. They also limit how much a line can grow,
/// because a rule applies to every occurrence of its word.
constexpr qsizetype longestPhonemes = 400;
constexpr qsizetype longestRuleText = 1000;

/// How to say a word: as other text, or as sounds. One of the two is empty.
struct PronunciationRule {
    QString word;
    QString alias;
    std::vector<Phone> phones;
};

/// Whether a model follows rules with sounds. All models follow rules with text.
enum class PhonemeRules { Followed, Skipped };

/// A run of text, or of sounds, in which case `text` is the word that they stand for.
struct SpokenRun {
    QString text;
    std::vector<Phone> phones;
};

/// Reads a W3C pronunciation lexicon (PLS 1.0). Each grapheme makes a rule with its lexeme's first alias or phoneme
/// element, in document order. Alphabets are "ipa", "x-arpabet" and "cmu-arpabet". Text over the limits above is an
/// error.
[[nodiscard]] base::Result<std::vector<PronunciationRule>, QString> readLexicon(const QByteArray &document);

/// Parses sounds in the given alphabet; none for an unknown alphabet or text over `longestPhonemes`.
[[nodiscard]] std::vector<Phone> phonesIn(const QString &alphabet, const QString &text);

/// Splits text into runs by applying the rules. Matching is case-sensitive and by whole words; the first matching rule
/// wins. Replacements aren't searched again.
[[nodiscard]] std::vector<SpokenRun> applyRules(const QString &text, const std::vector<PronunciationRule> &rules,
                                                PhonemeRules phonemeRules);

} // namespace orlenta::localvoices
