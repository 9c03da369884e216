#include "localvoices/lexicon/Lexicon.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QStringList>
#include <QtCore/QXmlStreamReader>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

struct Lexeme {
    QStringList graphemes;
    QString alias;
    std::vector<Phone> phones;

    [[nodiscard]] bool isSpoken() const { return !alias.isEmpty() || !phones.empty(); }
};

Lexeme readLexeme(QXmlStreamReader &reader, const QString &documentAlphabet) {
    Lexeme lexeme;
    while (reader.readNextStartElement()) {
        const QString element = reader.name().toString();
        const QString alphabet = reader.attributes().value(u"alphabet"_s).toString();
        const QString text = reader.readElementText().trimmed();
        if (text.size() > (element == u"phoneme"_s ? longestPhonemes : longestRuleText)) {
            reader.raiseError(u"The text of a %1 element is too long."_s.arg(element));
            break;
        }
        if (element == u"grapheme"_s && !text.isEmpty())
            lexeme.graphemes << text;
        else if (element == u"alias"_s && !lexeme.isSpoken())
            lexeme.alias = text;
        else if (element == u"phoneme"_s && !lexeme.isSpoken())
            lexeme.phones = phonesIn(alphabet.isEmpty() ? documentAlphabet : alphabet, text);
    }
    return lexeme;
}

bool isWordCharacter(char32_t character) {
    return character == U'_' || QChar::isLetterOrNumber(character);
}

bool startsInsideWord(QStringView rest) {
    if (rest.size() > 1 && rest.at(0).isHighSurrogate())
        return isWordCharacter(QChar::surrogateToUcs4(rest.at(0), rest.at(1)));
    return !rest.isEmpty() && isWordCharacter(rest.front().unicode());
}

bool endsInsideWord(QStringView before) {
    if (before.size() > 1 && before.back().isLowSurrogate())
        return isWordCharacter(QChar::surrogateToUcs4(before.at(before.size() - 2), before.back()));
    return !before.isEmpty() && isWordCharacter(before.back().unicode());
}

/// Rules by first character, in their original order: a lexicon may have tens of thousands.
using RuleIndex = QHash<QChar, QList<const PronunciationRule *>>;

RuleIndex indexOf(const std::vector<PronunciationRule> &rules, PhonemeRules phonemeRules) {
    RuleIndex index;
    for (const PronunciationRule &rule : rules)
        if (!rule.word.isEmpty() && (phonemeRules == PhonemeRules::Followed || rule.phones.empty()))
            index[rule.word.front()].append(&rule);
    return index;
}

const PronunciationRule *ruleAt(QStringView text, qsizetype at, const RuleIndex &index) {
    const auto candidates = index.constFind(text.at(at));
    if (candidates == index.constEnd() || endsInsideWord(text.first(at)))
        return nullptr;
    const QStringView rest = text.sliced(at);
    for (const PronunciationRule *rule : *candidates)
        if (rest.startsWith(rule->word) && !startsInsideWord(rest.sliced(rule->word.size())))
            return rule;
    return nullptr;
}

void appendText(std::vector<SpokenRun> &runs, const QString &text) {
    if (text.isEmpty())
        return;
    if (!runs.empty() && runs.back().phones.empty())
        runs.back().text += text;
    else
        runs.push_back({text, {}});
}

} // namespace

std::vector<Phone> phonesIn(const QString &alphabet, const QString &text) {
    if (text.size() > longestPhonemes)
        return {};
    if (alphabet == u"ipa"_s)
        return phonesFromIpa(text);
    if (alphabet == u"x-arpabet"_s || alphabet == u"cmu-arpabet"_s || alphabet == u"cmu"_s)
        return phonesFromArpabet(text);
    return {};
}

base::Result<std::vector<PronunciationRule>, QString> readLexicon(const QByteArray &document) {
    QXmlStreamReader reader(document);
    std::vector<PronunciationRule> rules;
    if (!reader.readNextStartElement() || reader.name() != u"lexicon"_s)
        return base::fail(u"The document has no lexicon element."_s);
    const QString alphabet = reader.attributes().value(u"alphabet"_s).toString();
    while (reader.readNextStartElement()) {
        if (reader.name() != u"lexeme"_s) {
            reader.skipCurrentElement();
            continue;
        }
        const Lexeme lexeme = readLexeme(reader, alphabet);
        if (lexeme.isSpoken())
            for (const QString &grapheme : lexeme.graphemes)
                rules.push_back({grapheme, lexeme.alias, lexeme.phones});
    }
    if (reader.hasError())
        return base::fail(u"Line %1: %2"_s.arg(reader.lineNumber()).arg(reader.errorString()));
    return rules;
}

std::vector<SpokenRun> applyRules(const QString &text, const std::vector<PronunciationRule> &rules,
                                  PhonemeRules phonemeRules) {
    std::vector<SpokenRun> runs;
    const RuleIndex index = indexOf(rules, phonemeRules);
    qsizetype from = 0;
    for (qsizetype at = 0; !index.isEmpty() && at < text.size();) {
        const PronunciationRule *rule = ruleAt(text, at, index);
        if (rule == nullptr) {
            ++at;
            continue;
        }
        appendText(runs, text.sliced(from, at - from));
        if (rule->phones.empty())
            appendText(runs, rule->alias);
        else
            runs.push_back({rule->word, rule->phones});
        at += rule->word.size();
        from = at;
    }
    appendText(runs, text.sliced(from));
    return runs;
}

} // namespace orlenta::localvoices
