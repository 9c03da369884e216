#pragma once

#include <vector>

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

enum class Stress { None, Primary, Secondary };

/// One sound of American English by its ARPABET name in capitals, such as "AE" or "NG".
struct Phone {
    QByteArray name;
    Stress stress = Stress::None;

    [[nodiscard]] bool isVowel() const;
    friend bool operator==(const Phone &, const Phone &) = default;
};

/// Reads ARPABET as the CMU Pronouncing Dictionary writes it: names with a stress digit on vowels, parted by blanks.
/// What isn't one of its names is left out.
[[nodiscard]] std::vector<Phone> phonesFromArpabet(const QString &text);

/// Reads the International Phonetic Alphabet. A sound that English lacks becomes its nearest neighbour; length and
/// other marks are left out. Text without a stress mark is stressed on its first vowel.
[[nodiscard]] std::vector<Phone> phonesFromIpa(const QString &text);

/// espeak-ng's phoneme mnemonics for English, without the double brackets.
[[nodiscard]] QByteArray espeakMnemonics(const std::vector<Phone> &phones);

/// Flite's names in the phone set of its American English lexicon, one for each phone.
[[nodiscard]] std::vector<QByteArray> fliteNames(const std::vector<Phone> &phones);

} // namespace orlenta::localvoices
