#include "audio/playback/WrittenTail.h"

#include <gtest/gtest.h>

namespace orlenta::audio {
namespace {

TEST(WrittenTail, TheSoundFallsFromItsPlaceToNothingAndStaysThere) {
    WrittenTail tail(2, 100);
    const std::vector<float> loud(2 * 250, 1.0F);
    tail.append(loud);
    EXPECT_EQ(tail.writtenFrames(), 250);
    const std::vector<float> faded = tail.fadedFrom(200, 20);
    ASSERT_EQ(faded.size(), 2U * 50U);
    EXPECT_GT(faded[0], 0.99F);
    for (std::size_t i = 2; i < faded.size(); ++i)
        EXPECT_LE(faded[i], faded[i - 2]);
    EXPECT_EQ(faded[2 * 19], 0.0F);
    EXPECT_EQ(faded.back(), 0.0F);
}

TEST(WrittenTail, OnlyWhatIsKeptCanFade) {
    WrittenTail tail(1, 100);
    tail.append(std::vector<float>(50, 1.0F));
    EXPECT_EQ(tail.fadedFrom(10, 20).size(), 40U);
    EXPECT_TRUE(tail.fadedFrom(50, 20).empty());
    EXPECT_TRUE(tail.fadedFrom(-1, 20).empty());
    tail.append(std::vector<float>(200, 1.0F));
    EXPECT_TRUE(tail.fadedFrom(149, 20).empty());
    EXPECT_EQ(tail.fadedFrom(150, 20).size(), 100U);
    // Less is left than the fade is long: it falls as far as it gets.
    EXPECT_EQ(tail.fadedFrom(245, 20).size(), 5U);
}

} // namespace
} // namespace orlenta::audio
