#include "base/SharedList.h"

#include <random>

#include <gtest/gtest.h>

namespace orlenta::base {
namespace {

// Iterates over the list, so that a broken chunk shows.
QList<int> walked(const SharedList<int> &list) {
    QList<int> found;
    for (const int item : list)
        found.append(item);
    return found;
}

TEST(SharedList, RandomChangesLeaveItLikeAPlainListAndItsCopiesAlone) {
    std::mt19937 random(20261121);
    SharedList<int> list;
    QList<int> plain;
    std::vector<std::pair<SharedList<int>, QList<int>>> copies;
    for (int step = 0; step < 20'000; ++step) {
        const auto at = [&](qsizetype size) { return size == 0 ? 0 : static_cast<qsizetype>(random()) % size; };
        // The list grows in the first half and shrinks in the second.
        const auto kind = static_cast<int>(random() % 10);
        if (plain.isEmpty() || kind < (step < 10'000 ? 6 : 2)) {
            const qsizetype index = at(plain.size() + 1);
            list.insert(index, step);
            plain.insert(index, step);
        } else if (kind < 8) {
            const qsizetype index = at(plain.size());
            list.removeAt(index);
            plain.removeAt(index);
        } else {
            const qsizetype from = at(plain.size());
            const qsizetype to = at(plain.size());
            list.move(from, to);
            plain.move(from, to);
        }
        ASSERT_EQ(list.size(), plain.size());
        if (step % 1000 == 0)
            copies.emplace_back(list, plain);
        if (!plain.isEmpty()) {
            const qsizetype index = at(plain.size());
            ASSERT_EQ(list.at(index), plain.at(index));
            ASSERT_EQ(list.indexOf(plain.at(index)), index);
        }
    }
    EXPECT_EQ(walked(list), plain);
    for (const auto &[copy, expected] : copies)
        EXPECT_EQ(walked(copy), expected);
}

TEST(SharedList, RangesAndBulkRemovalCrossChunks) {
    SharedList<int> list;
    for (int i = 0; i < 1000; ++i)
        list.append(i);
    const SharedList<int> before = list;
    EXPECT_EQ(list.mid(250, 12), (QList<int>{250, 251, 252, 253, 254, 255, 256, 257, 258, 259, 260, 261}));
    EXPECT_EQ(list.mid(998, 10), (QList<int>{998, 999}));
    EXPECT_TRUE(list.mid(1000, 5).isEmpty());
    list.removeIf([](int item) { return item % 2 == 0 || (item > 200 && item < 600); });
    EXPECT_EQ(list.size(), 300);
    EXPECT_EQ(list.at(99), 199);
    EXPECT_EQ(list.at(100), 601);
    EXPECT_EQ(list.last(), 999);
    EXPECT_EQ(before.size(), 1000);
    list.removeIf([](int) { return true; });
    EXPECT_TRUE(list.isEmpty());
    EXPECT_EQ(list, SharedList<int>());
}

TEST(SharedList, EqualityComparesContentNotChunks) {
    SharedList<int> appended;
    for (int i = 0; i < 600; ++i)
        appended.append(i);
    SharedList<int> inserted;
    for (int i = 599; i >= 0; --i)
        inserted.insert(0, i);
    EXPECT_EQ(appended, inserted);
    inserted.move(0, 1);
    EXPECT_FALSE(appended == inserted);
}

} // namespace
} // namespace orlenta::base
