#include "speech/LineGenerationQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QtCore/QCoreApplication>
#include <QtTest/QSignalSpy>

#include "speech/http/Completion.h"

namespace orlenta::speech {

namespace {

using model::LineId;
using ::testing::ElementsAre;
using Priority = LineGenerationQueue::Priority;

/// A queue whose generations end when the test ends them.
struct QueueUnderTest {
    QueueUnderTest() {
        perform = [this](LineId id) -> QCoro::Task<void> {
            started.append(id);
            running = Completion<bool>();
            co_await running;
        };
    }

    static void turn() { QCoreApplication::processEvents(); }
    void finishOne() {
        const Completion<bool> current = running;
        current.resolve(true);
    }

    LineGenerationQueue queue;
    LineGenerationQueue::Perform perform;
    QList<LineId> started;
    Completion<bool> running;
};

} // namespace

TEST(LineGenerationQueue, TakesLinesOneAfterAnotherAndIsActiveUntilTheLast) {
    QueueUnderTest under;
    const LineId a = LineId::create();
    const LineId b = LineId::create();
    under.queue.enqueue({a, b}, Priority::Normal, under.perform);
    EXPECT_TRUE(under.queue.isActive());
    QueueUnderTest::turn();
    EXPECT_THAT(under.started, ElementsAre(a));
    EXPECT_EQ(under.queue.activeLineId(), a);
    under.finishOne();
    EXPECT_THAT(under.started, ElementsAre(a, b));
    under.finishOne();
    EXPECT_FALSE(under.queue.isActive());
    EXPECT_FALSE(under.queue.activeLineId());
}

TEST(LineGenerationQueue, ADoubleClickMakesOneRequestButOneListMayNameALineTwice) {
    QueueUnderTest under;
    const LineId a = LineId::create();
    const LineId b = LineId::create();
    under.queue.enqueue({a}, Priority::Prioritized, under.perform);
    under.queue.enqueue({a}, Priority::Prioritized, under.perform);
    QueueUnderTest::turn();
    under.queue.enqueue({a, b, b}, Priority::Normal, under.perform);
    EXPECT_EQ(under.queue.pending().size(), 2);
    for (int i = 0; i < 3; ++i)
        under.finishOne();
    EXPECT_THAT(under.started, ElementsAre(a, b, b));
    EXPECT_FALSE(under.queue.isActive());
}

TEST(LineGenerationQueue, APrioritizedLineOvertakesWhatWaitsAndNotWhatRuns) {
    QueueUnderTest under;
    const QList<LineId> batch{LineId::create(), LineId::create(), LineId::create()};
    const LineId x = LineId::create();
    const LineId y = LineId::create();
    under.queue.enqueue(batch, Priority::Normal, under.perform);
    QueueUnderTest::turn();
    under.queue.enqueue({x, y}, Priority::Prioritized, under.perform);
    for (int i = 0; i < 5; ++i)
        under.finishOne();
    EXPECT_THAT(under.started, ElementsAre(batch.at(0), x, y, batch.at(1), batch.at(2)));
}

TEST(LineGenerationQueue, ProgressCountsWhatRanAndWhatWillRun) {
    using Progress = LineGenerationQueue::Progress;
    QueueUnderTest under;
    const QSignalSpy changed(&under.queue, &LineGenerationQueue::progressChanged);
    EXPECT_EQ(under.queue.progress(), (Progress{0, 0}));
    under.queue.enqueue({LineId::create(), LineId::create()}, Priority::Normal, under.perform);
    EXPECT_EQ(under.queue.progress(), (Progress{1, 2}));
    QueueUnderTest::turn();
    EXPECT_EQ(under.queue.progress(), (Progress{1, 2}));
    under.queue.enqueue({LineId::create()}, Priority::Prioritized, under.perform);
    EXPECT_EQ(under.queue.progress(), (Progress{1, 3}));
    under.finishOne();
    EXPECT_EQ(under.queue.progress(), (Progress{2, 3}));
    under.finishOne();
    under.finishOne();
    EXPECT_EQ(under.queue.progress(), (Progress{0, 0}));
    EXPECT_EQ(changed.count(), 6);
}

TEST(LineGenerationQueue, AStopLetsTheRunningLineFinishAndTheWaitingOnesEndAtTheirTurn) {
    QueueUnderTest under;
    const QList<LineId> batch{LineId::create(), LineId::create(), LineId::create()};
    under.queue.enqueue(batch, Priority::Normal, under.perform);
    QueueUnderTest::turn();
    EXPECT_TRUE(under.queue.canStop());
    under.queue.stop();
    EXPECT_FALSE(under.queue.canStop());
    EXPECT_EQ(under.queue.progress(), (LineGenerationQueue::Progress{1, 1}));
    EXPECT_EQ(under.queue.pending().size(), 2) << "nothing is taken out";
    EXPECT_TRUE(under.queue.holds(batch.at(0)));
    EXPECT_FALSE(under.queue.holds(batch.at(2)));
    under.queue.enqueue({batch.at(2)}, Priority::Normal, under.perform);
    under.finishOne();
    EXPECT_THAT(under.started, ElementsAre(batch.at(0), batch.at(2))) << "what was asked for after the stop runs";
    under.finishOne();
    EXPECT_FALSE(under.queue.isActive());
}

TEST(LineGenerationQueue, AQueueThatGoesLeavesWhatWaitsUndone) {
    auto under = std::make_unique<QueueUnderTest>();
    auto queue = std::make_unique<LineGenerationQueue>();
    queue->enqueue({LineId::create(), LineId::create()}, Priority::Normal, under->perform);
    QueueUnderTest::turn();
    queue.reset();
    under->finishOne();
    EXPECT_EQ(under->started.size(), 1);
}

} // namespace orlenta::speech
