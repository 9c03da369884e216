#include "tags/TagParser.h"

#include <chrono>

#include <gtest/gtest.h>

namespace orlenta::tags {
namespace {

using namespace Qt::StringLiterals;

struct FoundTag {
    QString text;
    qsizetype location;
    qsizetype length;
};

TEST(TagParser, FindsTagsByTheirBrackets) {
    const struct {
        QString text;
        QList<FoundTag> tags;
    } cases[] = {
        {u"[whispers] Hello [ Sighs ]"_s, {{u"whispers"_s, 0, 10}, {u"Sighs"_s, 17, 9}}},
        {u""_s, {}},
        {u"[] [ ] [\t]"_s, {}},
        {u"[[x]]"_s, {{u"[x"_s, 0, 4}}},
        {u"[a\nb]"_s, {}},
        {u"[a\n[b]"_s, {{u"b"_s, 3, 3}}},
        {u"[a\rb]"_s, {{u"a\rb"_s, 0, 5}}},
        {u"[]x]"_s, {}},
        {u"[ ][b]"_s, {{u"b"_s, 3, 3}}},
        {u"open [never"_s, {}},
        {u"\U0001F600[sad]"_s, {{u"sad"_s, 2, 5}}},
        {QString(QChar(0xD800)) + u"[sad]"_s, {{u"sad"_s, 1, 5}}},
    };
    for (const auto &[text, expected] : cases) {
        SCOPED_TRACE(text.toStdString());
        const QList<ParsedTag> tags = parseTags(text);
        ASSERT_EQ(tags.size(), expected.size());
        for (qsizetype i = 0; i < tags.size(); ++i) {
            EXPECT_EQ(tags.at(i).tagText, expected.at(i).text);
            EXPECT_EQ(tags.at(i).fullRange, (Utf16Range{expected.at(i).location, expected.at(i).length}));
            EXPECT_EQ(tags.at(i).normalizedKey, normalizedTagKey(expected.at(i).text));
        }
    }
}

TEST(TagParser, ReducesTagsToComparableKeys) {
    const std::pair<QString, QString> cases[] = {
        {u"[ Whispers \t  Softly ]"_s, u"whispers softly"_s},
        {u" whispers softly\n"_s, u"whispers softly"_s},
        {u"[]"_s, u"[]"_s},
        {u"[ ]"_s, u""_s},
        {u""_s, u""_s},
        {u"[[x]]"_s, u"[x]"_s},
        {u"[\u00C9xcited]"_s, u"excited"_s},
        {u"E\u0301xcited"_s, u"excited"_s},
        {u"\u0130stanbul"_s, u"istanbul"_s},
        {u"\u1F08\u03B8\u03AE\u03BD\u03B1"_s, u"\u03B1\u03B8\u03B7\u03BD\u03B1"_s},
        {u"Stra\u00DFe"_s, u"strasse"_s},
        // Outside the accented scripts a mark makes a different word, so these two must stay different.
        {u"\u304C"_s, u"\u304C"_s},
        {u"\u304B"_s, u"\u304B"_s},
        {u"a\u2003b"_s, u"a b"_s},
        // A bracket with a combining mark is a different character, so these aren't enclosed in brackets.
        {u"[\u0338x]"_s, u"[x]"_s},
    };
    for (const auto &[raw, key] : cases)
        EXPECT_EQ(normalizedTagKey(raw), key) << raw.toStdString();
    EXPECT_EQ(normalizedTagKey(u"STRASSE"_s), normalizedTagKey(u"stra\u00DFe"_s));
}

TEST(TagParser, ShowsTagsAsTyped) {
    EXPECT_EQ(displayTagText(u" [ Whispers   Softly ] "_s), u"Whispers   Softly"_s);
    EXPECT_EQ(displayTagText(u"\u00C9xcited"_s), u"\u00C9xcited"_s);
    EXPECT_EQ(displayTagText(u"[]"_s), u"[]"_s);
}

TEST(TagParser, StripsTagsAndTidiesTheGaps) {
    const std::pair<QString, QString> cases[] = {
        {u"[sad] Hello , world"_s, u"Hello, world"_s},
        {u"two  blanks , no tag "_s, u"two  blanks , no tag "_s},
        {u"[] stays  as it is"_s, u"[] stays  as it is"_s},
        {u"Well [sighs] then [laughs]."_s, u"Well then."_s},
        {u"a [x]\n[y] b"_s, u"a \n b"_s},
        {u"\n[x] b\n"_s, u"\n b\n"_s},
        {u"a\t[x]\tb\tc"_s, u"a b\tc"_s},
        {u"a\t,[x]"_s, u"a\t,"_s},
        {u"[only]"_s, u""_s},
        {u"[[x]]"_s, u"]"_s},
        {u"no[x]gap"_s, u"nogap"_s},
    };
    for (const auto &[text, stripped] : cases)
        EXPECT_EQ(strippingTags(text), stripped) << text.toStdString();
}

TEST(TagParser, ReadsLongHostileLinesInLinearTime) {
    const QStringList patterns{u"["_s, u"[]"_s, u"[ ]"_s, u"[a"_s, u" \t"_s, u"[[]"_s, u"[a] "_s, u"]"_s};
    const auto start = std::chrono::steady_clock::now();
    for (const QString &pattern : patterns)
        static_cast<void>(strippingTags(pattern.repeated(200'000 / pattern.size()) + u"[x]"_s));
    // Quadratic time on one of these would be minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

} // namespace
} // namespace orlenta::tags
