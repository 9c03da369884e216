#include "localvoices/engines/RecordingDecoder.h"

#include <algorithm>
#include <limits>

#include <gtest/gtest.h>
#include <QtCore/QtEndian>

#include "localvoices/engines/AudioEncoder.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

template <typename T>
QByteArray littleEndian(T value) {
    QByteArray bytes(sizeof(T), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

/// A WAV file of 32-bit floating-point frames at 44100 Hz.
QByteArray floatWav(const std::vector<float> &samples, quint16 channels) {
    QByteArray data;
    for (const float sample : samples)
        data += littleEndian(sample);
    return "RIFF" + littleEndian(static_cast<quint32>(data.size() + 36)) + "WAVEfmt " + littleEndian(quint32{16}) +
           littleEndian(quint16{3}) + littleEndian(channels) + littleEndian(quint32{44100}) +
           littleEndian(quint32{44100U * 4 * channels}) + littleEndian(static_cast<quint16>(4 * channels)) +
           littleEndian(quint16{32}) + "data" + littleEndian(static_cast<quint32>(data.size())) + data;
}

} // namespace

TEST(RecordingDecoder, MixesTheChannels) {
    const auto sound = decodedFile(floatWav({0.5F, 0.25F, -1.0F, 1.0F}, 2));
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->frames, (std::vector<float>{0.375F, 0.0F}));
    EXPECT_EQ(sound->rate, 44100);
}

TEST(RecordingDecoder, NumbersThatCannotBeSoundBecomeSilenceAndLoudOnesFullScale) {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    const auto sound = decodedFile(floatWav({notANumber, infinity, -infinity, 1e30F, -3.0F, 1.5F, 0.5F}, 1));
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->frames, (std::vector<float>{0, 0, 0, 0, -1, 1, 0.5F}));
    const auto pair = decodedFile(floatWav({1e38F, 1e38F, infinity, 0.5F}, 2));
    ASSERT_TRUE(pair);
    EXPECT_EQ(pair->frames, (std::vector<float>{0, 0.25F}));
}

TEST(RecordingDecoder, WhatIsTooLongOrNoSoundIsRefusedWithASentence) {
    EXPECT_EQ(decodedPcm16(QByteArray(2 * 16000 * 301, '\0')).error(), u"The audio is longer than five minutes."_s);
    const Sound long8k{std::vector<float>(8000 * 301, 0.1F), 8000};
    EXPECT_EQ(decodedFile(encoded(long8k, {Codec::Wav, 8000, 0}).value()).error(),
              u"The audio is longer than five minutes."_s);
    EXPECT_EQ(decodedPcm16({}).error(), u"The audio file contains no audio."_s);
    EXPECT_TRUE(decodedFile("RIFFnonsense").error().startsWith(u"The audio file could not be read"_s));
    EXPECT_TRUE(decodedFile({}).error().startsWith(u"The audio file could not be read"_s));
}

} // namespace orlenta::localvoices
