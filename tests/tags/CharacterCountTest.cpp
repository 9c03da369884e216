#include "tags/CharacterCount.h"

#include <gtest/gtest.h>
#include <QtCore/QList>
#include <QtCore/QString>

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

const QString familyEmoji = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;

TEST(CharacterCount, CountsWhatAReaderSees) {
    const std::pair<QString, qsizetype> cases[] = {
        {u""_s, 0},
        {u"abc"_s, 3},
        {u"e\u0301"_s, 1},
        {u"\u00E9"_s, 1},
        {familyEmoji, 1},
        {u"a\r\nb"_s, 3},
        {u"a\n\rb"_s, 4},
        {u"\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"_s, 2},
        {u"\U0001F44D\U0001F3FD!"_s, 2},
    };
    for (const auto &[text, count] : cases)
        EXPECT_EQ(characterCount(text), count) << text.toStdString();
}

TEST(CharacterCount, TakesPrefixesOfWholeCharacters) {
    const QString text = u"a"_s + familyEmoji + u"e\u0301z"_s;
    EXPECT_EQ(characterPrefix(text, 0).toString(), QString());
    EXPECT_EQ(characterPrefix(text, 2).toString(), u"a"_s + familyEmoji);
    EXPECT_EQ(characterPrefix(text, 3).toString(), u"a"_s + familyEmoji + u"e\u0301"_s);
    EXPECT_EQ(characterPrefix(text, 5).toString(), text);
    EXPECT_EQ(characterPrefix(QString(), 5).toString(), QString());
}

TEST(CharacterCount, KnowsThePlacesBetweenCharacters) {
    const QString text = u"a\U0001F600e\u0301"_s;
    const QList<bool> boundaries{true, true, false, true, false, true};
    for (qsizetype i = 0; i < boundaries.size(); ++i)
        EXPECT_EQ(isCharacterBoundary(text, i), boundaries.at(i)) << i;
    EXPECT_FALSE(isCharacterBoundary(text, -1));
    EXPECT_FALSE(isCharacterBoundary(text, 6));
}

} // namespace
} // namespace orlenta::tags
