#include "audio/devices/Standstill.h"

#include <gtest/gtest.h>

namespace orlenta::audio {
namespace {

using std::chrono::milliseconds;

TEST(Standstill, CountsOnlyTheTimeInWhichSomebodyLooked) {
    Standstill standstill;
    auto now = Standstill::Clock::now();
    for (int i = 0; i < 50; ++i)
        standstill.look(now += milliseconds(20));
    EXPECT_GE(standstill.length(), milliseconds(980));
    EXPECT_LE(standstill.length(), milliseconds(1100));
    standstill.moved();
    EXPECT_EQ(standstill.length(), milliseconds(0));
    standstill.look(now += std::chrono::hours(8)); // the process was stopped meanwhile
    EXPECT_LE(standstill.length(), milliseconds(100));
}

} // namespace
} // namespace orlenta::audio
