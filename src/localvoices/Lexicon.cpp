#include "localvoices/Lexicon.h"

#include <QtCore/QRegularExpression>
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
        if (element == u"grapheme"_s && !text.isEmpty())
            lexeme.graphemes << text;
        else if (element == u"alias"_s && !lexeme.isSpoken())
            lexeme.alias = text;
        else if (element == u"phoneme"_s && !lexeme.isSpoken())
            lexeme.phones = phonesIn(alphabet.isEmpty() ? documentAlphabet : alphabet, text);
    }
    return lexeme;
}

const PronunciationRule *ruleFor(const QString &word, const std::vector<PronunciationRule> &rules,
                                 PhonemeRules phonemeRules) {
    for (const PronunciationRule &rule : rules)
        if (rule.word == word && (phonemeRules == PhonemeRules::Followed || rule.phones.empty()))
            return &rule;
    return nullptr;
}

QRegularExpression patternOf(const std::vector<PronunciationRule> &rules, PhonemeRules phonemeRules) {
    QStringList words;
    for (const PronunciationRule &rule : rules)
        if (phonemeRules == PhonemeRules::Followed || rule.phones.empty())
            words << QRegularExpression::escape(rule.word);
    if (words.isEmpty())
        return {};
    return QRegularExpression(u"(?<![\\p{L}\\p{N}_])(?:"_s + words.join(u'|') + u")(?![\\p{L}\\p{N}_])"_s,
                              QRegularExpression::UseUnicodePropertiesOption);
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
    const QRegularExpression pattern = patternOf(rules, phonemeRules);
    qsizetype from = 0;
    if (!pattern.pattern().isEmpty() && pattern.isValid()) {
        QRegularExpressionMatchIterator matches = pattern.globalMatch(text);
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            const PronunciationRule *rule = ruleFor(match.captured(), rules, phonemeRules);
            if (rule == nullptr)
                continue;
            appendText(runs, text.sliced(from, match.capturedStart() - from));
            from = match.capturedEnd();
            if (rule->phones.empty())
                appendText(runs, rule->alias);
            else
                runs.push_back({rule->word, rule->phones});
        }
    }
    appendText(runs, text.sliced(from));
    return runs;
}

} // namespace orlenta::localvoices
