#include "pronunciation/LocalPronunciation.h"

#include <chrono>

#include <gtest/gtest.h>

namespace orlenta::pronunciation {
namespace {

using namespace Qt::StringLiterals;
using model::PronunciationEntry;

PronunciationEntry entry(const QString &spelling, const QString &phoneticOverride,
                         model::PronunciationMode mode = model::PronunciationMode::Simple) {
    PronunciationEntry made;
    made.id = model::PronunciationId::create();
    made.spelling = spelling;
    made.phoneticOverride = phoneticOverride;
    made.mode = mode;
    return made;
}

TEST(LocalPronunciation, ReplacesWholeWords) {
    const struct {
        QList<PronunciationEntry> entries;
        QString text;
        QString expected;
    } cases[] = {
        {{}, u"gif"_s, u"gif"_s},
        {{entry(u"gif"_s, u"jif"_s)}, u"Gif and gif"_s, u"jif and jif"_s},
        {{entry(u"Gif"_s, u"jif"_s)}, u"gif GIF Gif"_s, u"gif GIF jif"_s},
        {{entry(u"gif"_s, u"jif"_s)}, u"[gif] gif [a gif b]"_s, u"[gif] jif [a gif b]"_s},
        {{entry(u"gif"_s, u"jif"_s)}, u"[gif gif"_s, u"[jif jif"_s},
        {{entry(u"Ana"_s, u"Ahna"_s)},
         u"Banana Ana2 Ana_ _Ana Ana's Ana\u0416 (Ana)"_s,
         u"Banana Ana2 Ana_ _Ana Ahna's Ana\u0416 (Ahna)"_s},
        {{entry(u"Ana"_s, u"X"_s)},
         u"\U0001D400Ana Ana\U0001D400 \U0001F600Ana\U0001F600"_s,
         u"\U0001D400Ana Ana\U0001D400 \U0001F600X\U0001F600"_s},
        {{entry(u"A+B"_s, u"a plus b"_s)}, u"A+B AAB xA+B A+B."_s, u"a plus b AAB xA+B a plus b."_s},
        {{entry(u"cost"_s, u"$1 \\0 &"_s)}, u"cost"_s, u"$1 \\0 &"_s},
        {{entry(u"\u00E9t\u00E9"_s, u"ay-tay"_s)}, u"\u00C9t\u00E9 \u00E9t\u00E9"_s, u"ay-tay ay-tay"_s},
        {{entry(u"a a"_s, u"x"_s)}, u"a a a a a"_s, u"x x a"_s},
        {{entry(u"b"_s, u"x"_s)}, QString(QChar(0xD800)) + u" b"_s, QString(QChar(0xD800)) + u" x"_s},
        {{entry(u""_s, u"x"_s), entry(u"b"_s, u""_s)}, u"b"_s, u"b"_s},
    };
    for (const auto &[entries, text, expected] : cases)
        EXPECT_EQ(applyingLocalPronunciation(text, entries).toStdString(), expected.toStdString());
}

TEST(LocalPronunciation, LetsTheEarlierEntryWinAnOverlap) {
    const PronunciationEntry city = entry(u"New York"_s, u"Noo Yawk"_s);
    const PronunciationEntry york = entry(u"York"_s, u"Yawk"_s);
    EXPECT_EQ(applyingLocalPronunciation(u"New York, York"_s, {city, york}), u"Noo Yawk, Yawk"_s);
    EXPECT_EQ(applyingLocalPronunciation(u"New York"_s, {york, city}), u"New Yawk"_s);
    // Every entry as written comes before the capital form of any entry.
    EXPECT_EQ(applyingLocalPronunciation(u"Read"_s, {entry(u"read"_s, u"red"_s), entry(u"Read"_s, u"reed"_s)}),
              u"reed"_s);
    // Replacements aren't replaced again.
    EXPECT_EQ(applyingLocalPronunciation(u"a b"_s, {entry(u"a"_s, u"b"_s), entry(u"b"_s, u"a"_s)}), u"b a"_s);
}

TEST(LocalPronunciation, TakesOnlyEnabledSimpleEntries) {
    PronunciationEntry disabled = entry(u"gif"_s, u"jif"_s);
    disabled.isEnabled = false;
    const PronunciationEntry advanced = entry(u"png"_s, u"P IH1 NG"_s, model::PronunciationMode::Advanced);
    EXPECT_EQ(applyingLocalPronunciation(u"gif png"_s, {disabled, advanced}), u"gif png"_s);
}

TEST(LocalPronunciation, ReplacesInLongLinesInLinearTime) {
    QList<PronunciationEntry> entries;
    for (int i = 0; i < 20; ++i)
        entries.append(entry(u"w%1"_s.arg(i), u"word"_s));
    const auto start = std::chrono::steady_clock::now();
    for (const QString &pattern : {u"w1 "_s, u"[w1] "_s, u"w1w1"_s, u"["_s})
        static_cast<void>(applyingLocalPronunciation(pattern.repeated(100'000 / pattern.size()), entries));
    // Quadratic time on one of these would be minutes.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));
}

} // namespace
} // namespace orlenta::pronunciation
