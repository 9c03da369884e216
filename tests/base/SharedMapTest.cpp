#include "base/SharedMap.h"

#include <random>

#include <gtest/gtest.h>
#include <QtCore/QMap>

namespace orlenta::base {
namespace {

using Map = SharedMap<int, QString>;

QMap<int, QString> entriesOf(const Map &map) {
    QMap<int, QString> entries;
    map.forEach([&](int key, const QString &value) { entries.insert(key, value); });
    return entries;
}

TEST(SharedMap, RandomChangesLeaveItLikeAPlainMapAndItsCopiesAlone) {
    std::mt19937 random(20261121);
    Map map;
    QMap<int, QString> plain;
    std::vector<std::pair<Map, QMap<int, QString>>> copies;
    for (int step = 0; step < 20'000; ++step) {
        const int key = static_cast<int>(random() % 3000);
        if (random() % 3 != 0) {
            map.insert(key, QString::number(step));
            plain.insert(key, QString::number(step));
        } else {
            map.remove(key);
            plain.remove(key);
        }
        ASSERT_EQ(map.size(), plain.size());
        ASSERT_EQ(map.contains(key), plain.contains(key));
        if (step % 2000 == 0)
            copies.emplace_back(map, plain);
    }
    EXPECT_EQ(entriesOf(map), plain);
    for (const auto &[copy, expected] : copies)
        EXPECT_EQ(entriesOf(copy), expected);
}

TEST(SharedMap, DifferencesNameEachKeyOnceWithBothSides) {
    Map before;
    for (int i = 0; i < 1000; ++i)
        before.insert(i, QString::number(i));
    Map after = before;
    after.insert(7, QStringLiteral("changed"));
    after.insert(8, QString(QStringLiteral("8")));
    after.remove(9);
    after.insert(2000, QStringLiteral("new"));
    QMap<int, QString> found;
    after.forEachDifference(before, [&](int key, const QString *mine, const QString *theirs) {
        EXPECT_FALSE(found.contains(key));
        found.insert(key, (mine ? *mine : QStringLiteral("none")) + u'/' + (theirs ? *theirs : QStringLiteral("none")));
    });
    EXPECT_EQ(found, (QMap<int, QString>{{7, QStringLiteral("changed/7")},
                                         {9, QStringLiteral("none/9")},
                                         {2000, QStringLiteral("new/none")}}));
    EXPECT_FALSE(before == after);
    EXPECT_EQ(Map(), Map());
    EXPECT_FALSE(Map() == before);
}

} // namespace
} // namespace orlenta::base
