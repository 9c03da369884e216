#include "localvoices/lexicon/EngineText.h"

#include <gtest/gtest.h>
#include <QtCore/QStringList>

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

/// The text of each piece, with the number of sounds in brackets.
QStringList piecesOf(const std::vector<SpokenRun> &runs) {
    QStringList pieces;
    for (const std::vector<SpokenRun> &piece : enginePieces(runs)) {
        QString text;
        for (const SpokenRun &run : piece)
            text += run.phones.empty() ? run.text : u'(' + QString::number(run.phones.size()) + u')';
        pieces << text;
    }
    return pieces;
}

QStringList piecesOf(const QString &text) {
    return piecesOf({{text, {}}});
}

} // namespace

TEST(EngineText, KeepsWhatPeopleWrite) {
    for (const QString &text :
         {u"“It's 3.5% of $1,000,000.00 — isn't it?!” she said…"_s, u"Donaudampfschifffahrtsgesellschaft"_s,
          u"state-of-the-art, 24/7, 2024-12-31T23:59"_s, u"https://www.example.com/path?x=1"_s, u"192.168.0.1"_s,
          u"the U.S.A. and the U.S.S.R."_s, u"Καλημέρα κόσμε, नमस्ते दुनिया, 你好。"_s, u"yes 👍👍"_s, u"hm... (well)"_s})
        EXPECT_EQ(engineText(text), text);
}

TEST(EngineText, BoundsWhatTheEnginesCannotHold) {
    struct Case {
        QString text;
        QString expected;
    };
    for (const Case &each : {
             Case{u"!"_s.repeated(307), u"!!!!"_s},
             Case{u"a"_s + u"?!"_s.repeated(300) + u"b"_s, u"a?!?!b"_s},
             Case{u"x"_s.repeated(100), u"x"_s.repeated(40) + u' ' + u"x"_s.repeated(40) + u' ' + u"x"_s.repeated(20)},
             Case{u"9"_s.repeated(20), u"9"_s.repeated(15) + u' ' + u"9"_s.repeated(5)},
             Case{u".5"_s.repeated(10), u".5.5.5.5.5.5.5.5 .5.5"_s},
             Case{u"e"_s + u"\u0301"_s.repeated(50), u"e"_s + u"\u0301"_s.repeated(4)},
             Case{u"a.b.c."_s.repeated(4) + u" end."_s, u"a.b.c.a.b.c.a.b. c.a.b c end."_s},
             Case{u"x\u0001 50S[[t@]]y\u0007"_s, u"x  50S  t@  y "_s},
         })
        EXPECT_EQ(engineText(each.text).simplified(), each.expected.simplified()) << each.text.toStdString();
    // Surrogate pairs must not be split.
    EXPECT_FALSE(engineText(u"a"_s + u"👍"_s.repeated(100)).contains(QChar::ReplacementCharacter));
    EXPECT_EQ(QString::fromUtf8(engineText(u"a"_s + u"👍"_s.repeated(100)).toUtf8()).remove(u' '),
              u"a"_s + u"👍"_s.repeated(100));
}

TEST(EngineText, LongTextIsCutWhereASentenceEnds) {
    const QString sentence = u"This sentence has a comma, and it has fifty-eight letters. "_s;
    const QStringList pieces = piecesOf(sentence.repeated(20));
    ASSERT_EQ(pieces.size(), 3);
    EXPECT_EQ(pieces.join(QString()), sentence.repeated(20));
    for (const QString &piece : pieces)
        EXPECT_TRUE(piece.simplified().endsWith(u"letters."_s)) << piece.toStdString();
    // A sentence longer than a piece is cut after a comma or space.
    EXPECT_TRUE(piecesOf(u"aaa bbb, "_s.repeated(80)).constFirst().endsWith(u','));
    EXPECT_TRUE(piecesOf(u"aaa bbb "_s.repeated(80)).constFirst().endsWith(u' '));
}

TEST(EngineText, NoPieceIsLongerThanAnEngineCanTake) {
    for (const QString &text : {u"x"_s.repeated(40'000), u"你"_s.repeated(4000), u"👍"_s.repeated(4000),
                                u"no end "_s.repeated(5000), u". "_s.repeated(9000), u" "_s.repeated(9000)}) {
        QString whole;
        for (const QString &piece : piecesOf(text)) {
            EXPECT_LE(piece.toUtf8().size(), longestPiece);
            EXPECT_FALSE(piece.isEmpty());
            whole += piece;
        }
        EXPECT_EQ(whole, text);
    }
    EXPECT_EQ(piecesOf(QString()), QStringList());
}

TEST(EngineText, SoundsComeInWordsOfBoundedLength) {
    const std::vector<Phone> many(100, Phone{"AH", Stress::None});
    EXPECT_EQ(piecesOf({{u"one "_s, {}}, {u"word"_s, many}, {u" two"_s, {}}}), QStringList(u"one (40)(40)(20) two"_s));
    const std::vector<Phone> most(400, Phone{"AH", Stress::None});
    EXPECT_GT(piecesOf({{u"word"_s, most}}).size(), 2);
}

} // namespace orlenta::localvoices
