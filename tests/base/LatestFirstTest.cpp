#include "base/LatestFirst.h"

#include <thread>

#include <gtest/gtest.h>
#include <QtCore/QEventLoop>
#include <QtCore/QSemaphore>

namespace orlenta::base {
namespace {

constexpr int deadline = 20'000;

TEST(LatestFirst, TheLatestOrRepeatedRequestComesNext) {
    QSemaphore begun;
    QSemaphore mayEnd;
    QEventLoop loop;
    QList<int> finished;
    LatestFirst<int, int> squares(
        [&](const int &key, const std::stop_token &) {
            begun.release();
            mayEnd.acquire();
            return key * key;
        },
        [&](const int &key, const int &square) {
            EXPECT_EQ(square, key * key);
            finished.append(key);
            if (finished.size() == 5)
                loop.quit();
        });
    squares.ask(1);
    ASSERT_TRUE(begun.tryAcquire(1, deadline));
    for (const int key : {2, 3, 4, 5, 3, 1})
        squares.ask(key);
    mayEnd.release(5);
    loop.exec();
    EXPECT_EQ(finished, (QList<int>{1, 3, 5, 4, 2}));
    // A finished key may be requested again.
    mayEnd.release();
    squares.ask(1);
    EXPECT_TRUE(begun.tryAcquire(5, deadline));
}

TEST(LatestFirst, TheDestructorStopsRunningWorkAndDropsQueuedWork) {
    QSemaphore begun;
    int worked = 0;
    {
        LatestFirst<int, int> endless(
            [&](const int &key, const std::stop_token &stop) {
                ++worked;
                begun.release();
                while (!stop.stop_requested())
                    std::this_thread::yield();
                return key;
            },
            [](const int &, const int &) { ADD_FAILURE() << "told after the end"; });
        endless.ask(1);
        endless.ask(2);
        ASSERT_TRUE(begun.tryAcquire(1, deadline));
    }
    EXPECT_EQ(worked, 1);
}

} // namespace
} // namespace orlenta::base
