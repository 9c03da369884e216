#include "localvoices/engines/AudioEncoder.h"

#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "localvoices/engines/RecordingDecoder.h"

namespace orlenta::localvoices {

namespace {

Sound toneOf(std::size_t frames, int rate) {
    Sound sound{{}, rate};
    for (std::size_t i = 0; i < frames; ++i)
        sound.frames.push_back(0.5F * static_cast<float>(std::sin(0.05 * static_cast<double>(i))));
    return sound;
}

} // namespace

TEST(AudioEncoder, AnMp3HasTheLengthOfItsSound) {
    for (const std::size_t frames : {std::size_t{10}, std::size_t{1152}, std::size_t{44'100}, std::size_t{200'001}}) {
        const auto bytes = encoded(toneOf(frames, 44100), {Codec::Mp3, 44100, 128});
        ASSERT_TRUE(bytes);
        const auto sound = decodedFile(*bytes);
        ASSERT_TRUE(sound) << frames;
        EXPECT_EQ(sound->frames.size(), frames);
    }
}

TEST(AudioEncoder, AWavKeepsItsSamples) {
    const Sound tone = toneOf(5000, 48000);
    const auto sound = decodedFile(encoded(tone, {Codec::Wav, 48000, 0}).value());
    ASSERT_TRUE(sound);
    ASSERT_EQ(sound->frames.size(), tone.frames.size());
    for (std::size_t i = 0; i < tone.frames.size(); ++i)
        ASSERT_NEAR(sound->frames[i], tone.frames[i], 1e-4F);
}

TEST(AudioEncoder, TelephoneLawsGiveTheirStandardsKnownBytes) {
    // Silence and both extremes, according to ITU-T G.711.
    const Sound sound{{0.0F, 1.0F, -1.0F}, 8000};
    EXPECT_EQ(encoded(sound, {Codec::MuLaw, 8000, 0}), QByteArray("\xFF\x80\x00", 3));
    EXPECT_EQ(encoded(sound, {Codec::ALaw, 8000, 0}), QByteArray("\xD5\xAA\x2A", 3));
}

} // namespace orlenta::localvoices
