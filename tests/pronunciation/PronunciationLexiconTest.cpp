#include "pronunciation/PronunciationLexicon.h"

#include <gtest/gtest.h>
#include <QtCore/QXmlStreamReader>

#include "pronunciation/CapitalVariant.h"

namespace orlenta::pronunciation {
namespace {

using namespace Qt::StringLiterals;
using model::PronunciationEntry;
using model::PronunciationMode;

PronunciationEntry lexiconEntry(const QString &spelling, const QString &phoneticOverride, PronunciationMode mode,
                                std::optional<model::PhonemeAlphabet> alphabet = std::nullopt) {
    PronunciationEntry made;
    made.id = model::PronunciationId::create();
    made.spelling = spelling;
    made.phoneticOverride = phoneticOverride;
    made.mode = mode;
    made.alphabet = alphabet;
    return made;
}

TEST(PronunciationLexicon, WritesEachEntryAndItsCapitalForm) {
    PronunciationEntry disabled = lexiconEntry(u"off"_s, u"x"_s, PronunciationMode::Simple);
    disabled.isEnabled = false;
    const QList<PronunciationEntry> entries{
        lexiconEntry(u"gif"_s, u"jif"_s, PronunciationMode::Simple),
        disabled,
        lexiconEntry(u"AT&T"_s, u"<a> \"t\" 'n t"_s, PronunciationMode::Simple),
        lexiconEntry(u"Empty"_s, QString(), PronunciationMode::Simple),
        lexiconEntry(QString(), u"x"_s, PronunciationMode::Simple),
        lexiconEntry(u"Zoe"_s, u"Z OW1 IY0"_s, PronunciationMode::Advanced),
        lexiconEntry(u"Zo"_s, u"Z OW1"_s, PronunciationMode::Advanced, model::PhonemeAlphabet::Cmu),
        lexiconEntry(u"\u00E9clair"_s, u"e\u026A\u02C8kl\u025B\u0259"_s, PronunciationMode::Advanced,
                     model::PhonemeAlphabet::Ipa),
    };
    const QString expected = uR"(<?xml version="1.0" encoding="UTF-8"?>
<lexicon version="1.0" xmlns="http://www.w3.org/2005/01/pronunciation-lexicon" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="http://www.w3.org/2005/01/pronunciation-lexicon http://www.w3.org/TR/2007/CR-pronunciation-lexicon-20071212/pls.xsd" alphabet="ipa" xml:lang="en-US">
  <lexeme>
    <grapheme>gif</grapheme>
    <alias>jif</alias>
  </lexeme>
  <lexeme>
    <grapheme>Gif</grapheme>
    <alias>jif</alias>
  </lexeme>
  <lexeme>
    <grapheme>AT&amp;T</grapheme>
    <alias>&lt;a&gt; &quot;t&quot; 'n t</alias>
  </lexeme>
  <lexeme>
    <grapheme>Zoe</grapheme>
    <phoneme alphabet="x-arpabet">Z OW1 IY0</phoneme>
  </lexeme>
  <lexeme>
    <grapheme>Zo</grapheme>
    <phoneme alphabet="x-arpabet">Z OW1</phoneme>
  </lexeme>
  <lexeme>
    <grapheme>éclair</grapheme>
    <phoneme alphabet="ipa">eɪˈklɛə</phoneme>
  </lexeme>
  <lexeme>
    <grapheme>Éclair</grapheme>
    <phoneme alphabet="ipa">eɪˈklɛə</phoneme>
  </lexeme>
</lexicon>)"_s;
    const QString document = pronunciationLexicon(entries, u"en-US"_s);
    EXPECT_EQ(document.toStdString(), expected.toStdString());

    QXmlStreamReader reader(document);
    while (!reader.atEnd())
        reader.readNext();
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
}

TEST(PronunciationLexicon, WithoutAUsableEntryIsStillADocument) {
    const QString document = pronunciationLexicon({}, u"en-US"_s);
    EXPECT_TRUE(document.endsWith(u"xml:lang=\"en-US\">\n</lexicon>"_s));
}

TEST(CapitalVariant, RaisesOnlyALowerCaseFirstCharacter) {
    EXPECT_EQ(capitalVariant(u"gif files"_s), u"Gif files"_s);
    EXPECT_EQ(capitalVariant(u"e\u0301t\u00E9"_s), u"E\u0301t\u00E9"_s);
    EXPECT_EQ(capitalVariant(u"\U00010428x"_s), u"\U00010400x"_s);
    for (const QString &word : {QString(), u"Gif"_s, u"2x"_s, u" gif"_s, u"\u4E2D"_s, u"[x"_s})
        EXPECT_EQ(capitalVariant(word), std::nullopt) << word.toStdString();
}

} // namespace
} // namespace orlenta::pronunciation
