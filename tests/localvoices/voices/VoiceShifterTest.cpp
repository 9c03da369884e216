#include "localvoices/voices/VoiceShifter.h"

#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace orlenta::localvoices {

namespace {

/// One second of a voice-like sound: harmonics of decreasing strength.
Sound humOf(double hertz, int rate = 22050) {
    Sound sound{{}, rate};
    for (int i = 0; i < rate; ++i) {
        double sum = 0;
        for (int harmonic = 1; harmonic <= 10; ++harmonic)
            sum += std::sin(2 * std::numbers::pi * hertz * harmonic * i / rate) / harmonic;
        sound.frames.push_back(static_cast<float>(sum * 0.2));
    }
    return sound;
}

} // namespace

TEST(VoiceShifter, FindsTheMiddlePitch) {
    for (const double hertz : {80.0, 125.0, 210.0, 330.0})
        EXPECT_NEAR(middlePitch(humOf(hertz)), hertz, hertz * 0.03);
    EXPECT_EQ(middlePitch({std::vector<float>(22050, 0.0F), 22050}), 0.0);
    EXPECT_EQ(middlePitch({{}, 22050}), 0.0);
}

TEST(VoiceShifter, ShiftsPitchAndKeepsTheLength) {
    const Sound hum = humOf(120);
    for (const double ratio : {0.7, 1.5}) {
        const Sound moved = shifted(hum, {ratio, 1.0});
        EXPECT_EQ(moved.frames.size(), hum.frames.size());
        EXPECT_NEAR(middlePitch(moved) / 120.0, ratio, ratio * 0.05);
    }
}

TEST(VoiceShifter, FormantsAloneLeaveThePitch) {
    const Sound hum = humOf(120);
    const Sound moved = shifted(hum, {1.0, 1.3});
    EXPECT_NE(moved.frames, hum.frames);
    EXPECT_NEAR(middlePitch(moved), 120.0, 4.0);
}

TEST(VoiceShifter, PaceChangesTheLengthAndNotThePitch) {
    const Sound quick = paced(humOf(150), 1.6);
    EXPECT_NEAR(quick.seconds(), 1.0 / 1.6, 0.02);
    EXPECT_NEAR(middlePitch(quick), 150.0, 5.0);
}

} // namespace orlenta::localvoices
