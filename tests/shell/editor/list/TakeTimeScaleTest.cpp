#include "shell/editor/list/TakeTimeScale.h"

#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

namespace orlenta::shell {
namespace {

TEST(TakeTimeScale, ALaneIsTheSmallestStepThatHoldsNineTenthsOfTheTakes) {
    TakeTimeScale scale;
    EXPECT_EQ(scale.laneSeconds(), 0.0);
    QSignalSpy changed(&scale, &TakeTimeScale::laneSecondsChanged);
    model::LineIdList lines;
    const auto add = [&](int count, double seconds) {
        for (int index = 0; index < count; ++index) {
            lines.append(model::LineId::create());
            scale.setSeconds(lines.last(), seconds);
        }
    };
    add(9, 5.0);
    EXPECT_EQ(scale.laneSeconds(), 5.0);
    add(1, 25.0);
    EXPECT_EQ(scale.laneSeconds(), 5.0);
    add(1, 25.0);
    EXPECT_EQ(scale.laneSeconds(), 30.0);
    add(5, 400.0);
    EXPECT_EQ(scale.laneSeconds(), 60.0);
    EXPECT_EQ(changed.count(), 3);
    // The same length again, as each refreshed row reports it.
    scale.setSeconds(lines.last(), 400.0);
    EXPECT_EQ(changed.count(), 3);
    // Another take, and one that isn't known yet.
    scale.setSeconds(lines.last(), 4.0);
    scale.setSeconds(lines.at(14), 0.0);
    EXPECT_EQ(scale.laneSeconds(), 60.0);
    scale.keepOnly(lines.mid(0, 9));
    EXPECT_EQ(scale.laneSeconds(), 5.0);
    scale.setShared(false);
    EXPECT_EQ(scale.laneSeconds(), 0.0);
    scale.setShared(true);
    EXPECT_EQ(scale.laneSeconds(), 5.0);
    scale.keepOnly({});
    EXPECT_EQ(scale.laneSeconds(), 0.0);
}

} // namespace
} // namespace orlenta::shell
