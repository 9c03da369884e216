#pragma once

#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Stress { None, Primary, Secondary };

/// A sound of American English, with its ARPABET name in capitals such as "AE" or "NG".
struct Phone {
    QByteArray name;
    Stress stress = Stress::None;

    [[nodiscard]] bool isVowel() const;
    friend bool operator==(const Phone &, const Phone &) = default;
};

/// Parses ARPABET as in the CMU Pronouncing Dictionary: names separated by spaces, with stress digits on vowels. Skips
/// unknown names.
[[nodiscard]] std::vector<Phone> phonesFromArpabet(const QString &text);

/// Parses the International Phonetic Alphabet. Sounds that English lacks become their nearest neighbours; length and
/// other marks are skipped. Without a stress mark, the first vowel is stressed.
[[nodiscard]] std::vector<Phone> phonesFromIpa(const QString &text);

/// espeak-ng's phoneme mnemonics for English, without the double brackets.
[[nodiscard]] QByteArray espeakMnemonics(const std::vector<Phone> &phones);

/// The phones' names in Flite's American English lexicon, one for each.
[[nodiscard]] std::vector<QByteArray> fliteNames(const std::vector<Phone> &phones);

} // namespace orlenta::localvoices
