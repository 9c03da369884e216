#include "model/LineList.h"

#include <gtest/gtest.h>

namespace orlenta::model {
namespace {

using namespace Qt::StringLiterals;

LineList listOf(std::initializer_list<std::int64_t> orders) {
    LineList list;
    for (const std::int64_t order : orders)
        list.append(ProjectLine::makeNew(order));
    return list;
}

ProjectLine withText(ProjectLine line, const QString &text) {
    line.text = text;
    return line;
}

TEST(LineList, ACopyKeepsItsLinesWhenTheOriginalChanges) {
    LineList list = listOf({0, 1, 2});
    const LineList copy = list;
    EXPECT_EQ(&copy.at(1), &list.at(1));
    list.replace(1, withText(list.at(1), u"new"_s));
    list.append(ProjectLine::makeNew(3));
    EXPECT_EQ(copy.size(), 3);
    EXPECT_EQ(copy.at(1).text, QString());
    EXPECT_EQ(list.at(1).text, u"new"_s);
    EXPECT_EQ(&copy.at(2), &list.at(2));
    EXPECT_NE(copy, list);
}

TEST(LineList, PositionsFollowEveryChange) {
    LineList list = listOf({0, 1, 2});
    const LineId first = list.at(0).lineId;
    const LineId last = list.at(2).lineId;
    EXPECT_EQ(list.indexOf(last), 2);
    const LineList before = list;

    const ProjectLine added = ProjectLine::makeNew(3);
    list.append(added);
    EXPECT_EQ(list.indexOf(added.lineId), 3);
    EXPECT_EQ(before.indexOf(added.lineId), -1);

    const ProjectLine other = ProjectLine::makeNew(0);
    list.replace(0, other);
    EXPECT_EQ(list.indexOf(first), -1);
    EXPECT_EQ(list.indexOf(other.lineId), 0);
    EXPECT_EQ(before.indexOf(first), 0);

    list.rearrange({2, 0});
    EXPECT_EQ(list.indexOf(last), 0);
    EXPECT_EQ(list.find(added.lineId), nullptr);
    EXPECT_EQ(before.indexOf(last), 2);
}

TEST(LineList, ARepeatedIdFindsItsFirstLine) {
    LineList list = listOf({0, 1});
    list.append(list.at(1));
    EXPECT_EQ(list.indexOf(list.at(1).lineId), 1);
    const LineList built(std::vector<ProjectLine>{list.at(0), list.at(1), list.at(1)});
    EXPECT_EQ(built.indexOf(list.at(1).lineId), 1);
}

TEST(LineList, RearrangingNumbersTheLinesAndSharesThoseInPlace) {
    LineList list = listOf({0, 1, 2, 3});
    const LineList before = list;
    list.rearrange({0, 2, 1, 3});
    EXPECT_EQ(&list.at(0), &before.at(0));
    EXPECT_EQ(&list.at(3), &before.at(3));
    EXPECT_EQ(list.at(1).lineId, before.at(2).lineId);
    for (qsizetype i = 0; i < list.size(); ++i)
        EXPECT_EQ(list.at(i).order, i);
    EXPECT_EQ(before.at(2).order, 2);
}

TEST(LineList, RenumberingIsStableAndLeavesAListInOrderShared) {
    LineList list = listOf({5, -1, 5, 2});
    const LineList before = list;
    list.renumberByOrder();
    const qsizetype expected[] = {1, 3, 0, 2};
    for (qsizetype i = 0; i < list.size(); ++i) {
        EXPECT_EQ(list.at(i).lineId, before.at(expected[i]).lineId);
        EXPECT_EQ(list.at(i).order, i);
        EXPECT_EQ(list.indexOf(before.at(expected[i]).lineId), i);
    }
    LineList again = list;
    again.renumberByOrder();
    EXPECT_EQ(&again.at(0), &list.at(0));
    EXPECT_EQ(again, list);
}

TEST(LineList, EqualityGoesByContent) {
    const LineList list = listOf({0, 1});
    LineList same(std::vector<ProjectLine>{list.at(0), list.at(1)});
    EXPECT_EQ(list, same);
    same.replace(1, withText(same.at(1), u"x"_s));
    EXPECT_NE(list, same);
    EXPECT_EQ(LineList(), LineList(std::vector<ProjectLine>{}));
}

} // namespace
} // namespace orlenta::model
