#include "audio/files/WavFileWriter.h"

#include <cmath>

#include <gtest/gtest.h>
#include <QtCore/QFile>

#include "audio/AudioTestFiles.h"
#include "audio/files/WavHeader.h"
#include "support/FileSizeLimit.h"

namespace orlenta::audio::test {
namespace {

using Placement = WavFileWriter::Placement;

void writeWav(const QString &path, const WavFormat &format, const std::vector<double> &samples) {
    auto writer = WavFileWriter::create(path, format);
    ASSERT_TRUE(writer);
    ASSERT_TRUE(writer.value().writeFrames(std::span<const double>(samples)));
    ASSERT_TRUE(writer.value().finish());
}

TEST(WavHeader, IsTheCanonicalFortyFourBytes) {
    EXPECT_EQ(wavHeader(1000, 44100, 2, 16).toHex(' '),
              QByteArray("52 49 46 46 0c 04 00 00 57 41 56 45 66 6d 74 20 10 00 00 00 01 00 02 00 "
                         "44 ac 00 00 10 b1 02 00 04 00 10 00 64 61 74 61 e8 03 00 00"));
    EXPECT_EQ(wavHeader(3, 48000, 1, 24).toHex(' '),
              QByteArray("52 49 46 46 27 00 00 00 57 41 56 45 66 6d 74 20 10 00 00 00 01 00 01 00 "
                         "80 bb 00 00 80 32 02 00 03 00 18 00 64 61 74 61 03 00 00 00"));
}

TEST(WavFileWriter, FilesAreByteForByteThoseOfLibsndfile) {
    const AudioTestFolder folder;
    for (const int depth : {16, 24}) {
        for (const int channels : {1, 2, 6}) {
            const auto samples = noise(static_cast<size_t>(channels) * 40001, depth);
            const int format = depth == 16 ? wav16 : wav24;
            const QString theirs = folder.write(QStringLiteral("theirs.wav"), samples, {48000, channels, format});
            const QString ours = folder.path(QStringLiteral("ours.wav"));
            writeWav(ours, {48000, static_cast<quint16>(channels), static_cast<quint16>(depth)}, samples);
            EXPECT_EQ(bytesOf(ours), bytesOf(theirs)) << depth << " bits, " << channels << " channels";
        }
    }
}

TEST(WavFileWriter, EveryDepthGivesBackTheSamplesExactly) {
    const AudioTestFolder folder;
    const QString path = folder.path(QStringLiteral("a.wav"));
    for (const int depth : {8, 16, 24, 32}) {
        const auto samples = noise(5001, depth);
        writeWav(path, {44100, 1, static_cast<quint16>(depth)}, samples);
        EXPECT_EQ(readAll(path), samples) << depth;
    }
}

TEST(WavFileWriter, OverloadsStopAtFullScaleAndWhatCanNotBeSoundIsSilent) {
    const AudioTestFolder folder;
    const QString path = folder.path(QStringLiteral("a.wav"));
    const std::vector<double> wild{1.5, -1.5, 1e9, -1e9, 1e300, HUGE_VAL, -HUGE_VAL, std::nan(""), 1.0, -1.0};
    for (const int depth : {8, 16, 24, 32}) {
        writeWav(path, {44100, 1, static_cast<quint16>(depth)}, wild);
        const double top = 1.0 - std::ldexp(1.0, 1 - depth);
        EXPECT_EQ(readAll(path), (std::vector<double>{top, -1, top, -1, 0, 0, 0, 0, top, -1})) << depth;
    }
}

TEST(WavFileWriter, AnUnfinishedFileIsGoneUnlessItIsWrittenInPlace) {
    const AudioTestFolder folder;
    const auto samples = noise(1000, 16);
    for (const Placement placement : {Placement::RenamedWhenOnDisk, Placement::RenamedUnflushed, Placement::InPlace}) {
        const QString path = folder.path(QStringLiteral("take.wav"));
        auto writer = WavFileWriter::create(path, {44100, 1, 16}, placement);
        ASSERT_TRUE(writer);
        ASSERT_TRUE(writer.value().writeFrames(std::span<const double>(samples)));
        if (placement == Placement::InPlace)
            EXPECT_EQ(readAll(path), samples) << "as after a crash";
        else
            EXPECT_FALSE(QFile::exists(path));
    }
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("take.wav")});
    EXPECT_EQ(readAll(folder.path(QStringLiteral("take.wav"))), samples);
}

TEST(WavFileWriter, AFullDiskIsToldAndTheOldFileStays) {
    const AudioTestFolder folder;
    const QString path = folder.writeBytes(QStringLiteral("take.wav"), "old");
    const auto samples = noise(100000, 16);
    auto writer = WavFileWriter::create(path, {44100, 1, 16});
    ASSERT_TRUE(writer);
    {
        const testing::FileSizeLimit limit(64 * 1024);
        const auto written = writer.value().writeFrames(std::span<const double>(samples));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, AudioFileError::Kind::CannotWrite);
        EXPECT_TRUE(written.error().description().contains(QStringLiteral("take.wav")));
    }
    { const WavFileWriter ended = std::move(writer).value(); }
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("take.wav")});
    EXPECT_EQ(bytesOf(path), QByteArray("old"));
}

TEST(WavFileWriter, MoreThanFourGibibytesAreRefusedBeforeAnythingIsWritten) {
    const AudioTestFolder folder;
    const QString source = folder.writeBytes(QStringLiteral("source"), "x");
    const auto opened = base::openRegularFile(source);
    ASSERT_TRUE(opened);
    auto writer = WavFileWriter::create(folder.path(QStringLiteral("a.wav")), {44100, 1, 16});
    ASSERT_TRUE(writer);
    const auto copied = writer.value().copyBytes(*opened, 0, largestWavData + 1);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().kind, AudioFileError::Kind::TooLarge);
    EXPECT_EQ(writer->framesWritten(), 0);
}

} // namespace
} // namespace orlenta::audio::test
