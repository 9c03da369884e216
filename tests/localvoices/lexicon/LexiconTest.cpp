#include "localvoices/lexicon/Lexicon.h"

#include <gtest/gtest.h>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

QByteArray lexiconOf(const QByteArray &lexemes) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<lexicon version=\"1.0\" "
           "xmlns=\"http://www.w3.org/2005/01/pronunciation-lexicon\" alphabet=\"ipa\" xml:lang=\"en-US\">" +
           lexemes + "\n</lexicon>";
}

/// The text of all runs, with words that have sounds in brackets.
QString written(const std::vector<SpokenRun> &runs) {
    QString text;
    for (const SpokenRun &run : runs)
        text += run.phones.empty() ? run.text : u'(' + run.text + u')';
    return text;
}

} // namespace

TEST(Lexicon, EveryGraphemeOfALexemeIsARule) {
    const auto rules = readLexicon(lexiconOf("<lexeme><grapheme>AT&amp;T</grapheme><grapheme>att</grapheme>"
                                             "<alias>A T and T</alias></lexeme>"
                                             "<lexeme><grapheme>empty</grapheme><alias></alias></lexeme>"
                                             "<lexeme><grapheme>pain</grapheme><phoneme>pɛ̃</phoneme></lexeme>"));
    ASSERT_TRUE(rules);
    ASSERT_EQ(rules->size(), 3U);
    EXPECT_EQ(rules->at(0).word, u"AT&T"_s);
    EXPECT_EQ(rules->at(1).alias, u"A T and T"_s);
    EXPECT_EQ(rules->at(2).phones.size(), 2U) << "the document's alphabet holds where the element names none";
}

TEST(Lexicon, ADocumentWithoutLexemesIsALexicon) {
    const auto rules = readLexicon(lexiconOf(""));
    ASSERT_TRUE(rules);
    EXPECT_TRUE(rules->empty());
}

TEST(Lexicon, WhatIsNoLexiconIsRefused) {
    for (const QByteArray &document : {QByteArray(), QByteArray("words"), QByteArray("<html></html>"),
                                       lexiconOf("<lexeme><grapheme>a</lexeme>"), lexiconOf("").chopped(3)})
        EXPECT_FALSE(readLexicon(document)) << document.constData();
}

TEST(Lexicon, TextsPastTheLimitsMakeALexiconUnreadable) {
    const auto withText = [](const QByteArray &element, qsizetype length) {
        const QByteArray text = '<' + element + '>' + QByteArray(length, 'a') + "</" + element + '>';
        return readLexicon(lexiconOf("<lexeme><grapheme>word</grapheme>" + text + "</lexeme>")).hasValue();
    };
    EXPECT_TRUE(withText("phoneme", longestPhonemes));
    EXPECT_FALSE(withText("phoneme", longestPhonemes + 1));
    EXPECT_FALSE(withText("phoneme", 500'000));
    for (const QByteArray &element : {QByteArray("alias"), QByteArray("grapheme")}) {
        EXPECT_TRUE(withText(element, longestRuleText));
        EXPECT_FALSE(withText(element, longestRuleText + 1)) << element.constData();
    }
    EXPECT_TRUE(phonesIn(u"ipa"_s, u"a"_s.repeated(longestPhonemes + 1)).empty());
}

TEST(Lexicon, RulesMatchWholeWordsInTheirOwnCase) {
    const std::vector<PronunciationRule> rules{{u"Ana"_s, u"Ahna"_s, {}},
                                               {u"New York"_s, u"NY"_s, {}},
                                               {u"York"_s, u"Yorick"_s, {}},
                                               {u"A+B"_s, u"sum"_s, {}},
                                               {u"wow"_s, {}, phonesFromArpabet(u"W AW1"_s)}};
    struct Case {
        QString text;
        QString spoken;
    };
    for (const Case &each : {Case{u"Ana's Banana, Ana2, ANA, Ana"_s, u"Ahna's Banana, Ana2, ANA, Ahna"_s},
                             Case{u"New York, York"_s, u"NY, Yorick"_s}, Case{u"A+B AB"_s, u"sum AB"_s},
                             Case{u"oh wow!"_s, u"oh (wow)!"_s}, Case{QString(), QString()}})
        EXPECT_EQ(written(applyRules(each.text, rules, PhonemeRules::Followed)), each.spoken);
    EXPECT_EQ(written(applyRules(u"oh wow!"_s, rules, PhonemeRules::Skipped)), u"oh wow!"_s);
}

} // namespace orlenta::localvoices
