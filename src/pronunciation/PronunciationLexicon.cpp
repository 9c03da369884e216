#include "pronunciation/PronunciationLexicon.h"

#include "pronunciation/CapitalVariant.h"

namespace orlenta::pronunciation {
namespace {

using namespace Qt::StringLiterals;

/// The apostrophe needs no escape: attributes are in double quotes.
QString escaped(QString value) {
    return value.replace(u'&', "&amp;"_L1).replace(u'<', "&lt;"_L1).replace(u'>', "&gt;"_L1).replace(u'"', "&quot;"_L1);
}

QString alphabetName(const std::optional<model::PhonemeAlphabet> &alphabet) {
    return alphabet == model::PhonemeAlphabet::Ipa ? u"ipa"_s : u"x-arpabet"_s;
}

QString spokenElement(const model::PronunciationEntry &entry) {
    const QString value = escaped(entry.phoneticOverride);
    switch (entry.mode) {
    case model::PronunciationMode::Simple:
        return u"<alias>"_s + value + u"</alias>"_s;
    case model::PronunciationMode::Advanced:
        return u"<phoneme alphabet=\""_s + alphabetName(entry.alphabet) + u"\">"_s + value + u"</phoneme>"_s;
    }
    Q_UNREACHABLE();
}

QString lexeme(const QString &grapheme, const QString &spoken) {
    return u"\n  <lexeme>\n    <grapheme>"_s + escaped(grapheme) + u"</grapheme>\n    "_s + spoken + u"\n  </lexeme>"_s;
}

} // namespace

QString pronunciationLexicon(const QList<model::PronunciationEntry> &entries, const QString &language) {
    QString document = u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<lexicon version=\"1.0\""
                       " xmlns=\"http://www.w3.org/2005/01/pronunciation-lexicon\""
                       " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\""
                       " xsi:schemaLocation=\"http://www.w3.org/2005/01/pronunciation-lexicon"
                       " http://www.w3.org/TR/2007/CR-pronunciation-lexicon-20071212/pls.xsd\""
                       " alphabet=\"ipa\" xml:lang=\""_s +
                       escaped(language) + u"\">"_s;
    for (const model::PronunciationEntry &entry : entries) {
        if (!entry.isEnabled || entry.spelling.isEmpty() || entry.phoneticOverride.isEmpty())
            continue;
        const QString spoken = spokenElement(entry);
        document += lexeme(entry.spelling, spoken);
        if (const std::optional<QString> capital = capitalVariant(entry.spelling))
            document += lexeme(*capital, spoken);
    }
    return document + u"\n</lexicon>"_s;
}

} // namespace orlenta::pronunciation
