#include "tags/TagInsertion.h"

#include <limits>

#include <gtest/gtest.h>

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

const TagItem sad{TagItemId::create(), u"sad"_s, u"[sad]"_s, TagCategory::Emotion};

SelectionSources live(qsizetype location, qsizetype length = 0) {
    return {Utf16Range{location, length}, std::nullopt, std::nullopt};
}

TEST(TagInsertion, SetsATagOffWithBlanks) {
    const struct {
        QString text;
        qsizetype location;
        QString expected;
        qsizetype caret;
    } cases[] = {
        {u""_s, 0, u"[sad]"_s, 5},
        {u"Hello"_s, 0, u"[sad] Hello"_s, 5},
        {u"Hello"_s, 5, u"Hello [sad]"_s, 11},
        {u"Hello"_s, 2, u"He [sad] llo"_s, 8},
        {u"a b"_s, 1, u"a [sad] b"_s, 7},
        {u"a b"_s, 2, u"a [sad] b"_s, 7},
        {u"a\nb"_s, 2, u"a\n[sad] b"_s, 7},
        {u"ab"_s, 99, u"ab [sad]"_s, 8},
        {u"ab"_s, -3, u"[sad] ab"_s, 5},
        // A caret inside a character is ignored: the tag goes to the end.
        {u"\U0001F600a"_s, 1, u"\U0001F600a [sad]"_s, 9},
    };
    for (const auto &[text, location, expected, caret] : cases) {
        const auto insertion = insertTag(sad, text, live(location));
        ASSERT_TRUE(insertion);
        EXPECT_EQ(insertion->text, expected);
        EXPECT_EQ(insertion->textSelectionRange, (Utf16Range{caret, 0})) << text.toStdString();
    }
}

TEST(TagInsertion, GoesBeforeASelectedWord) {
    const auto insertion = insertTag(sad, u"one two"_s, live(4, 3));
    ASSERT_TRUE(insertion);
    EXPECT_EQ(insertion->text, u"one [sad] two"_s);
}

TEST(TagInsertion, PrefersTheMostRecentCaretOtherwiseTheEnd) {
    const QString text = u"ab"_s;
    const Utf16Range start{0, 0};
    const Utf16Range end{2, 0};
    EXPECT_EQ(insertTag(sad, text, {start, end, end})->text, u"[sad] ab"_s);
    EXPECT_EQ(insertTag(sad, text, {std::nullopt, start, end})->text, u"[sad] ab"_s);
    EXPECT_EQ(insertTag(sad, text, {std::nullopt, std::nullopt, start})->text, u"[sad] ab"_s);
    EXPECT_EQ(insertTag(sad, text, {})->text, u"ab [sad]"_s);
    EXPECT_EQ(insertTag(sad, u"ab "_s, {})->text, u"ab [sad]"_s);
}

TEST(TagInsertion, StressTogglesBetweenUpperAndLowerCase) {
    const TagItem stress = stressTagItem();
    const auto first = insertTag(stress, u"go nOw please"_s, live(3, 3));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->text, u"go NOW please"_s);
    EXPECT_EQ(first->textSelectionRange, (Utf16Range{3, 3}));
    const auto second = insertTag(stress, first->text, {std::nullopt, first->textSelectionRange, std::nullopt});
    ASSERT_TRUE(second);
    EXPECT_EQ(second->text, u"go now please"_s);
}

TEST(TagInsertion, StressLeavesTextAloneWithoutAFittingSelection) {
    const TagItem stress = stressTagItem();
    const QString text = u"e\u0301\U0001F600x"_s;
    for (const Utf16Range &range :
         {Utf16Range{1, 1}, Utf16Range{0, 1}, Utf16Range{2, 1}, Utf16Range{4, 2}, Utf16Range{9, 1}, Utf16Range{-1, 2},
          Utf16Range{1, std::numeric_limits<qsizetype>::max()}})
        EXPECT_FALSE(insertTag(stress, text, {range, std::nullopt, std::nullopt})) << range.location;
    EXPECT_EQ(insertTag(stress, text, {})->text, text);
}

TEST(TagInsertion, TheFirstKnownSelectionDecidesEvenWhenItIsEmpty) {
    const Utf16Range word{2, 3};
    EXPECT_EQ(effectiveSelectionRange({Utf16Range{4, 0}, word, word}), Utf16Range{});
    EXPECT_EQ(effectiveSelectionRange({std::nullopt, word, Utf16Range{7, 1}}), word);
    EXPECT_EQ(effectiveSelectionRange({std::nullopt, std::nullopt, word}), word);
    EXPECT_EQ(effectiveSelectionRange({}), Utf16Range{});
}

} // namespace
} // namespace orlenta::tags
