#include <random>

#include <gtest/gtest.h>

#include "shell/editor/list/HeightIndex.h"

namespace orlenta::shell {
namespace {

TEST(HeightIndex, MatchesPlainSumsWhileHeightsChange) {
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyHeight(1, 300);
    for (const size_t count : {size_t{1}, size_t{2}, size_t{63}, size_t{64}, size_t{1000}}) {
        std::vector<int> heights(count);
        for (int &height : heights)
            height = anyHeight(random);
        HeightIndex index;
        index.assign(heights);
        for (int change = 0; change < 40; ++change) {
            const size_t row = random() % count;
            heights[row] = anyHeight(random);
            index.setHeight(static_cast<qsizetype>(row), heights[row]);
            qint64 offset = 0;
            for (size_t i = 0; i < count; ++i) {
                ASSERT_EQ(index.offsetOf(static_cast<qsizetype>(i)), offset);
                ASSERT_EQ(index.rowAt(offset), static_cast<qsizetype>(i));
                ASSERT_EQ(index.rowAt(offset + heights[i] - 1), static_cast<qsizetype>(i));
                offset += heights[i];
            }
            ASSERT_EQ(index.total(), offset);
        }
    }
}

TEST(HeightIndex, OffsetsOutsideTheRowsGiveTheNearestRow) {
    HeightIndex index;
    EXPECT_EQ(index.rowAt(0), -1);
    EXPECT_EQ(index.total(), 0);
    index.assign({10, 20, 30});
    EXPECT_EQ(index.rowAt(-5), 0);
    EXPECT_EQ(index.rowAt(60), 2);
    EXPECT_EQ(index.rowAt(1'000'000), 2);
}

} // namespace
} // namespace orlenta::shell
