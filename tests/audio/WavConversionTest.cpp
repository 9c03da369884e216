#include "audio/files/WavConversion.h"

#include <algorithm>

#include <gtest/gtest.h>
#include <QtCore/QFileInfo>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"
#include "audio/ToneMeasurement.h"
#include "support/FileSizeLimit.h"

namespace orlenta::audio::test {
namespace {

struct ConversionCase {
    double rate;
    int depth;
    size_t frames;
    size_t tail;
};

TEST(WavConversion, EveryOutputEndsInATailOfExactZerosAndKeepsItsSource) {
    const AudioTestFolder input;
    const QString source = input.write(QStringLiteral("in.wav"), tone(997, 44100, 100003), {44100, 1, wav16});
    input.run(QStringLiteral("lame"), QStringLiteral("--quiet -b 192 in.wav in.mp3"));
    for (const char *extension : {"wav", "mp3"}) {
        const QString path = input.path(QStringLiteral("in.") + QString::fromLatin1(extension));
        const QByteArray bytes = bytesOf(path);
        for (const auto &[rate, depth, frames, tail] :
             {ConversionCase{44100, 16, 100003, 8820}, ConversionCase{44100, 24, 100003, 8820},
              ConversionCase{48000, 16, 108847, 9600}, ConversionCase{48000, 24, 108847, 9600}}) {
            const AudioTestFolder folder;
            const auto converted = convertToWAV(path, QStringLiteral("tts"), rate, depth, folder.folder());
            ASSERT_TRUE(converted) << converted.error().description().toStdString();
            EXPECT_EQ(folder.names(), QStringList{QFileInfo(*converted).fileName()});
            EXPECT_TRUE(QFileInfo(*converted).fileName().startsWith(QStringLiteral("tts_")));
            EXPECT_EQ(bytesOf(path), bytes);
            auto reader = AudioFileReader::open(*converted);
            ASSERT_TRUE(reader);
            EXPECT_EQ(reader->sampleRate(), rate);
            EXPECT_EQ(reader->format().bitDepth, depth);
            const auto samples = readAll(*converted);
            ASSERT_EQ(samples.size(), frames + tail);
            EXPECT_TRUE(std::all_of(samples.end() - static_cast<std::ptrdiff_t>(tail), samples.end(),
                                    [](double sample) { return sample == 0.0; }));
            const qint64 dataBytes = static_cast<qint64>(samples.size()) * depth / 8;
            EXPECT_EQ(QFileInfo(*converted).size(), 44 + dataBytes + dataBytes % 2);
        }
    }
}

TEST(WavConversion, TheSameRateKeepsEverySample) {
    const AudioTestFolder folder;
    const auto samples = noise(2 * 10007, 16);
    const QString source = folder.write(QStringLiteral("in.wav"), samples, {44100, 2, wav16});
    for (const int depth : {16, 24}) {
        const auto path = convertToWAV(source, QStringLiteral("sts"), 44100.0, depth, folder.folder());
        ASSERT_TRUE(path);
        auto read = readAll(*path);
        ASSERT_EQ(read.size(), samples.size() + 2 * 8820);
        read.resize(samples.size());
        EXPECT_EQ(read, samples) << depth;
    }
}

TEST(WavConversion, ATonePassesThroughAtFullQuality) {
    const AudioTestFolder folder;
    const QString source = folder.write(QStringLiteral("in.wav"), tone(997, 44100, 88200), {44100, 1, wavDouble});
    const auto path = convertToWAV(source, QStringLiteral("tts"), 48000.0, 24, folder.folder());
    ASSERT_TRUE(path);
    const auto samples = readAll(*path);
    const auto measured = measureTone(std::span(samples).subspan(4800, 86400), 997, 48000);
    // 24 bits at half scale allow 140.2 dB.
    EXPECT_GT(measured.sinad, 139.5);
    EXPECT_NEAR(measured.peak, 0.5, 1e-5);
}

TEST(WavConversion, AFailureLeavesNothing) {
    const AudioTestFolder folder;
    const AudioTestFolder input;
    const QString good = input.write(QStringLiteral("in.wav"), noise(60000, 16), {44100, 1, wav16});
    const auto convert = [&folder](const QString &source) {
        return convertToWAV(source, QStringLiteral("tts"), 48000.0, 24, folder.folder());
    };
    for (const QString &source : {input.writeBytes(QStringLiteral("empty.mp3"), QByteArray()),
                                  input.writeBytes(QStringLiteral("text.mp3"), "{\"detail\":\"no\"}"),
                                  input.writeBytes(QStringLiteral("cut.wav"), bytesOf(good).first(30)),
                                  input.path(QStringLiteral("missing.wav"))}) {
        EXPECT_FALSE(convert(source));
        EXPECT_TRUE(folder.names().isEmpty());
    }
    EXPECT_FALSE(convertToWAV(good, QStringLiteral("no/such/folder"), 48000.0, 24, folder.folder()));
    const testing::FileSizeLimit limit(128 * 1024);
    const auto path = convert(good);
    ASSERT_FALSE(path);
    EXPECT_EQ(path.error().kind, AudioFileError::Kind::CannotWrite);
    EXPECT_TRUE(folder.names().isEmpty());
}

TEST(ConvertingReader, TheOutputBufferHoldsWhatOneBlockTurnsInto) {
    EXPECT_EQ(ConvertingReader::outputCapacity(44100, 48000), 4459 + 1024);
    EXPECT_EQ(ConvertingReader::outputCapacity(48000, 48000), 4096 + 1024);
}

TEST(ConvertingReader, ChannelsAreFoldedAndSpread) {
    const AudioTestFolder folder;
    struct FoldCase {
        std::vector<double> from;
        std::vector<double> to;
    };
    const std::vector<FoldCase> cases{{{0.5, 0.25}, {0.375}},
                                      {{0.5}, {0.5, 0.5}},
                                      {{0.5, 0.25, 0.125, -0.25}, {0.3125, 0.0}},
                                      {{0.5, 0.25}, {0.5, 0.25, 0.0}},
                                      {{0.5, 0.25}, {0.5, 0.25}}};
    for (const auto &[from, to] : cases) {
        const auto channels = static_cast<int>(to.size());
        const QString path =
            folder.write(QStringLiteral("in.wav"), from, {44100, static_cast<int>(from.size()), wav24});
        auto reader = AudioFileReader::open(path);
        ASSERT_TRUE(reader);
        auto converted = ConvertingReader::create(reader.value(), 44100, channels);
        ASSERT_TRUE(converted);
        std::vector<double> frame(to.size());
        const auto read = converted.value().readFrames(frame);
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, 1);
        EXPECT_EQ(frame, to);
        EXPECT_EQ(*converted.value().readFrames(frame), 0);
    }
}

} // namespace
} // namespace orlenta::audio::test
