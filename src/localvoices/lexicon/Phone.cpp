#include "localvoices/lexicon/Phone.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QtCore/QStringList>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

struct EspeakRow {
    const char *arpabet;
    const char *mnemonic;
    bool vowel;
};

constexpr std::array espeakRows = std::to_array<EspeakRow>({
    {"AA", "A:", true}, {"AE", "a", true},   {"AH", "V", true},   {"AO", "O:", true}, {"AW", "aU", true},
    {"AY", "aI", true}, {"EH", "E", true},   {"ER", "3:", true},  {"EY", "eI", true}, {"IH", "I", true},
    {"IY", "i:", true}, {"OW", "oU", true},  {"OY", "OI", true},  {"UH", "U", true},  {"UW", "u:", true},
    {"B", "b", false},  {"CH", "tS", false}, {"D", "d", false},   {"DH", "D", false}, {"F", "f", false},
    {"G", "g", false},  {"HH", "h", false},  {"JH", "dZ", false}, {"K", "k", false},  {"L", "l", false},
    {"M", "m", false},  {"N", "n", false},   {"NG", "N", false},  {"P", "p", false},  {"R", "r", false},
    {"S", "s", false},  {"SH", "S", false},  {"T", "t", false},   {"TH", "T", false}, {"V", "v", false},
    {"W", "w", false},  {"Y", "j", false},   {"Z", "z", false},   {"ZH", "Z", false},
});

const EspeakRow *rowOf(const QByteArray &name) {
    const auto found =
        std::find_if(espeakRows.begin(), espeakRows.end(), [&name](const EspeakRow &r) { return name == r.arpabet; });
    return found == espeakRows.end() ? nullptr : &*found;
}

struct IpaRow {
    const char16_t *symbol;
    const char *arpabet;
};

// The first match is used, so longer symbols come before their prefixes.
constexpr std::array ipaRows = std::to_array<IpaRow>({
    {u"t͡ʃ", "CH"}, {u"d͡ʒ", "JH"}, {u"tʃ", "CH"}, {u"dʒ", "JH"}, {u"aɪ", "AY"}, {u"aʊ", "AW"}, {u"eɪ", "EY"},
    {u"oʊ", "OW"}, {u"əʊ", "OW"}, {u"ɔɪ", "OY"}, {u"ɑ", "AA"},  {u"ɒ", "AA"},  {u"a", "AA"},  {u"æ", "AE"},
    {u"ʌ", "AH"},  {u"ɐ", "AH"},  {u"ə", "AH"},  {u"ɘ", "AH"},  {u"ɚ", "ER"},  {u"ɝ", "ER"},  {u"ɜ", "ER"},
    {u"ø", "ER"},  {u"œ", "ER"},  {u"ɔ", "AO"},  {u"ɛ", "EH"},  {u"e", "EH"},  {u"ɪ", "IH"},  {u"ɨ", "IH"},
    {u"i", "IY"},  {u"y", "IY"},  {u"o", "OW"},  {u"ʊ", "UH"},  {u"u", "UW"},  {u"ɯ", "UW"},  {u"b", "B"},
    {u"d", "D"},   {u"ɖ", "D"},   {u"ð", "DH"},  {u"f", "F"},   {u"ɸ", "F"},   {u"g", "G"},   {u"ɡ", "G"},
    {u"ɟ", "G"},   {u"ɣ", "G"},   {u"h", "HH"},  {u"ɦ", "HH"},  {u"x", "HH"},  {u"χ", "HH"},  {u"ç", "HH"},
    {u"k", "K"},   {u"c", "K"},   {u"q", "K"},   {u"l", "L"},   {u"ɫ", "L"},   {u"ɬ", "L"},   {u"ɭ", "L"},
    {u"ʎ", "L Y"}, {u"m", "M"},   {u"ɱ", "M"},   {u"n", "N"},   {u"ɳ", "N"},   {u"ɲ", "N Y"}, {u"ŋ", "NG"},
    {u"p", "P"},   {u"r", "R"},   {u"ɹ", "R"},   {u"ɻ", "R"},   {u"ɾ", "R"},   {u"ʁ", "R"},   {u"ʀ", "R"},
    {u"s", "S"},   {u"ʃ", "SH"},  {u"ʂ", "SH"},  {u"ɕ", "SH"},  {u"t", "T"},   {u"ʈ", "T"},   {u"θ", "TH"},
    {u"v", "V"},   {u"β", "V"},   {u"ʋ", "V"},   {u"w", "W"},   {u"ʍ", "W"},   {u"j", "Y"},   {u"z", "Z"},
    {u"ʒ", "ZH"},  {u"ʐ", "ZH"},  {u"ʑ", "ZH"},
});

const IpaRow *ipaRowAt(QStringView rest) {
    const auto found = std::find_if(ipaRows.begin(), ipaRows.end(),
                                    [rest](const IpaRow &r) { return rest.startsWith(QStringView(r.symbol)); });
    return found == ipaRows.end() ? nullptr : &*found;
}

void stressFirstVowel(std::vector<Phone> &phones) {
    const bool stressed =
        std::any_of(phones.begin(), phones.end(), [](const Phone &p) { return p.stress == Stress::Primary; });
    if (stressed)
        return;
    const auto vowel = std::find_if(phones.begin(), phones.end(), [](const Phone &p) { return p.isVowel(); });
    if (vowel != phones.end())
        vowel->stress = Stress::Primary;
}

} // namespace

bool Phone::isVowel() const {
    const EspeakRow *row = rowOf(name);
    return row != nullptr && row->vowel;
}

std::vector<Phone> phonesFromArpabet(const QString &text) {
    std::vector<Phone> phones;
    const QStringList words = text.toUpper().split(u' ', Qt::SkipEmptyParts);
    for (const QString &word : words) {
        QByteArray name = word.toLatin1();
        Stress stress = Stress::None;
        if (name.endsWith('1'))
            stress = Stress::Primary;
        else if (name.endsWith('2'))
            stress = Stress::Secondary;
        if (!name.isEmpty() && name.back() >= '0' && name.back() <= '2')
            name.chop(1);
        if (rowOf(name) != nullptr)
            phones.push_back({name, stress});
    }
    stressFirstVowel(phones);
    return phones;
}

std::vector<Phone> phonesFromIpa(const QString &text) {
    const QString composed = text.normalized(QString::NormalizationForm_C).toLower();
    std::vector<Phone> phones;
    Stress pending = Stress::None;
    for (qsizetype at = 0; at < composed.size();) {
        const QStringView rest = QStringView(composed).sliced(at);
        if (rest.startsWith(u'ˈ') || rest.startsWith(u'\''))
            pending = Stress::Primary;
        else if (rest.startsWith(u'ˌ'))
            pending = Stress::Secondary;
        const IpaRow *row = ipaRowAt(rest);
        at += row != nullptr ? QStringView(row->symbol).size() : 1;
        if (row == nullptr)
            continue;
        for (const QByteArray &name : QByteArray(row->arpabet).split(' ')) {
            Phone phone{name, Stress::None};
            if (phone.isVowel())
                phone.stress = std::exchange(pending, Stress::None);
            phones.push_back(phone);
        }
    }
    stressFirstVowel(phones);
    return phones;
}

QByteArray espeakMnemonics(const std::vector<Phone> &phones) {
    QByteArray text;
    for (const Phone &phone : phones) {
        const EspeakRow *row = rowOf(phone.name);
        if (row == nullptr)
            continue;
        if (phone.stress == Stress::Primary)
            text += '\'';
        else if (phone.stress == Stress::Secondary)
            text += ',';
        if (phone.stress == Stress::None && phone.name == "AH")
            text += '@';
        else if (phone.stress == Stress::None && phone.name == "ER")
            text += '3';
        else
            text += row->mnemonic;
    }
    return text;
}

std::vector<QByteArray> fliteNames(const std::vector<Phone> &phones) {
    std::vector<QByteArray> names;
    for (const Phone &phone : phones) {
        const bool reduced = phone.stress == Stress::None && phone.name == "AH";
        QByteArray name = reduced ? QByteArray("ax") : phone.name.toLower();
        if (phone.isVowel())
            name += phone.stress == Stress::Primary ? '1' : '0';
        names.push_back(name);
    }
    return names;
}

} // namespace orlenta::localvoices
