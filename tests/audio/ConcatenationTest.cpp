#include "audio/files/Concatenation.h"

#include <future>

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/ToneMeasurement.h"
#include "support/FileSizeLimit.h"

namespace orlenta::audio::test {
namespace {

QUrl urlOf(const QString &path) {
    return QUrl::fromLocalFile(path);
}

AudioFileFormat formatOf(const QString &path) {
    const auto reader = AudioFileReader::open(path);
    EXPECT_TRUE(reader);
    return reader ? reader->format() : AudioFileFormat{};
}

TEST(Concatenation, TheFirstInputDecidesUnlessTheRatesDiffer) {
    using Info = ConcatenationInputInfo;
    const std::vector<std::pair<QList<Info>, Info>> cases{
        {{Info{44100, 1, 16}}, Info{44100, 1, 16}},
        {{Info{44100, 1, 16}, Info{44100.4, 2, 24}}, Info{44100, 1, 16}},
        {{Info{44100, 1, 16}, Info{44101, 1, 16}}, Info{48000, 1, 24}},
        {{Info{44100, 1, 16}, Info{48000, 1, 16}}, Info{48000, 1, 24}},
        {{Info{44100, 2, 16}, Info{48000, 1, 32}}, Info{48000, 2, 32}},
        {{Info{44100, 0, 16}, Info{44100, 2, 16}}, Info{44100, 1, 16}},
        {{Info{96000, 1, 24}, Info{96000, 1, 32}}, Info{96000, 1, 24}},
    };
    for (const auto &[inputs, expected] : cases)
        EXPECT_EQ(concatenationFormat(inputs), expected);
}

TEST(Concatenation, FilesOfOneFormatFollowEachOtherBitForBit) {
    const AudioTestFolder folder;
    std::vector<double> expected;
    QList<QUrl> urls;
    for (const unsigned seed : {1U, 2U, 3U}) {
        // The odd lengths make files with a pad byte, which must not come between.
        const auto samples = noise(33333 + 2 * seed, 24, seed);
        urls.append(urlOf(folder.write(QString::number(seed), samples, {48000, 1, wav24})));
        expected.insert(expected.end(), samples.begin(), samples.end());
    }
    urls.insert(1, urlOf(folder.write(QStringLiteral("empty.wav"), {}, {48000, 1, wav24})));
    const QString output = folder.path(QStringLiteral("out.wav"));
    ASSERT_TRUE(concatenateAudio(urls, urlOf(output)));
    EXPECT_EQ(readAll(output), expected);
    EXPECT_EQ(bytesOf(output), bytesOf(folder.write(QStringLiteral("whole.wav"), expected, {48000, 1, wav24})));
}

TEST(Concatenation, OneRateInOtherCodingsIsCopiedSampleBySample) {
    const AudioTestFolder folder;
    const auto first = noise(5000, 16, 1);
    const auto second = noise(5000, 16, 2);
    const QList<QUrl> urls{urlOf(folder.write(QStringLiteral("a.wav"), first, {44100, 1, wav16})),
                           urlOf(folder.write(QStringLiteral("b.wav"), second, {44100, 1, wavFloat}))};
    folder.run(QStringLiteral("sox"), QStringLiteral("b.wav -b 16 -D c.aiff"));
    const QString output = folder.path(QStringLiteral("out.wav"));
    ASSERT_TRUE(concatenateAudio({urls[0], urls[1], urlOf(folder.path(QStringLiteral("c.aiff")))}, urlOf(output)));
    auto expected = first;
    expected.insert(expected.end(), second.begin(), second.end());
    expected.insert(expected.end(), second.begin(), second.end());
    EXPECT_EQ(readAll(output), expected);
}

TEST(Concatenation, MixedRatesAndChannelsAreConvertedToTheFirstChannelsAt48Kilohertz) {
    const AudioTestFolder folder;
    const QUrl mono = urlOf(folder.write(QStringLiteral("mono.wav"), tone(997, 44100, 44100), {44100, 1, wav16}));
    std::vector<double> both;
    for (const double sample : tone(997, 48000, 48000))
        both.insert(both.end(), {sample, sample});
    const QUrl stereo = urlOf(folder.write(QStringLiteral("stereo.wav"), both, {48000, 2, wav16}));
    const QString output = folder.path(QStringLiteral("out.wav"));

    ASSERT_TRUE(concatenateAudio({mono, stereo}, urlOf(output)));
    EXPECT_EQ(formatOf(output), (AudioFileFormat{48000, 1, AudioFileFormat::Coding::LinearPCM, 24}));
    const auto joined = readAll(output);
    ASSERT_EQ(joined.size(), 96000U);
    for (const size_t start : {size_t{4800}, size_t{52800}})
        EXPECT_GT(measureTone(std::span(joined).subspan(start, 38400), 997, 48000).sinad, 85.0);

    ASSERT_TRUE(concatenateAudio({stereo, mono}, urlOf(output)));
    EXPECT_EQ(formatOf(output), (AudioFileFormat{48000, 2, AudioFileFormat::Coding::LinearPCM, 24}));
    EXPECT_EQ(readAll(output).size(), 2 * 96000U);
}

TEST(Concatenation, ACompressedInputCountsAs24Bit) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), tone(440, 44100, 20000), {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet in.wav in.mp3"));
    const QString output = folder.path(QStringLiteral("out.wav"));
    ASSERT_TRUE(concatenateAudio({urlOf(folder.path(QStringLiteral("in.mp3")))}, urlOf(output)));
    EXPECT_EQ(formatOf(output).bitDepth, 24);
    EXPECT_EQ(readAll(output).size(), 20000U);
}

TEST(Concatenation, OnlyEmptyInputsGiveAnEmptyValidFile) {
    const AudioTestFolder folder;
    const QUrl empty = urlOf(folder.write(QStringLiteral("empty.wav"), {}, {44100, 2, wav16}));
    const QString output = folder.path(QStringLiteral("out.wav"));
    ASSERT_TRUE(concatenateAudio({empty, empty}, urlOf(output)));
    EXPECT_EQ(formatOf(output), (AudioFileFormat{44100, 2, AudioFileFormat::Coding::LinearPCM, 16}));
    EXPECT_TRUE(readAll(output).empty());
}

TEST(Concatenation, FailuresAreWordedAndLeaveNothing) {
    const AudioTestFolder folder;
    const QUrl output = urlOf(folder.path(QStringLiteral("out.wav")));
    const auto nothing = concatenateAudio(QList<QUrl>{}, output);
    ASSERT_FALSE(nothing);
    EXPECT_EQ(nothing.error().code(), 1);
    EXPECT_EQ(nothing.error().description(), QStringLiteral("No audio files to concatenate"));

    const QUrl good = urlOf(folder.write(QStringLiteral("good.wav"), noise(60000, 16), {44100, 1, wav16}));
    const auto missing = concatenateAudio({good, urlOf(folder.path(QStringLiteral("gone.wav")))}, output);
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code(), 0);
    EXPECT_TRUE(missing.error().description().contains(QStringLiteral("gone.wav")));

    const testing::FileSizeLimit limit(64 * 1024);
    EXPECT_FALSE(concatenateAudio({good}, output));
    // The user knows nothing of the file in the temporary folder.
    const auto joined = concatenateAudio({good}, ConcatenationOwner::Caller);
    ASSERT_FALSE(joined);
    EXPECT_TRUE(joined.error().description().startsWith(QStringLiteral("The audio could not be written: ")))
        << joined.error().description().toStdString();
    EXPECT_EQ(folder.names(), QStringList{QStringLiteral("good.wav")});
}

TEST(Concatenation, TheNextOneRemovesTheLastThatNobodyRetains) {
    const AudioTestFolder folder;
    const QList<QUrl> urls{urlOf(folder.write(QStringLiteral("a.wav"), noise(100, 16), {44100, 1, wav16}))};
    const auto retained = concatenateAudio(urls, ConcatenationOwner::Caller);
    const auto first = concatenateAudio(urls, ConcatenationOwner::NextConcatenation);
    ASSERT_TRUE(retained);
    ASSERT_TRUE(first);
    EXPECT_TRUE(first->fileName().startsWith(QStringLiteral("continuous_")));
    EXPECT_FALSE(concatenateAudio({urlOf(folder.path(QStringLiteral("gone.wav")))}, ConcatenationOwner::Caller));
    EXPECT_TRUE(QFile::exists(first->toLocalFile())) << "a list that can't be read makes no room";
    const auto second = concatenateAudio(urls, ConcatenationOwner::NextConcatenation);
    ASSERT_TRUE(second);
    EXPECT_FALSE(QFile::exists(first->toLocalFile()));
    EXPECT_TRUE(QFile::exists(second->toLocalFile()));
    EXPECT_TRUE(QFile::exists(retained->toLocalFile()));
    QFile::remove(second->toLocalFile());
    QFile::remove(retained->toLocalFile());
}

TEST(Concatenation, SeveralAtOnceKeepTheirOwnFiles) {
    const AudioTestFolder folder;
    const auto samples = noise(20000, 16);
    const QList<QUrl> urls{urlOf(folder.write(QStringLiteral("a.wav"), samples, {44100, 1, wav16}))};
    std::vector<std::future<QUrl>> running;
    for (int i = 0; i < 8; ++i)
        running.push_back(std::async(std::launch::async, [urls] {
            const auto joined = concatenateAudio(urls, ConcatenationOwner::Caller);
            return joined ? *joined : QUrl();
        }));
    for (auto &one : running) {
        const QString path = one.get().toLocalFile();
        EXPECT_EQ(readAll(path), samples);
        QFile::remove(path);
    }
}

} // namespace
} // namespace orlenta::audio::test
