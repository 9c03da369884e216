#include <cmath>
#include <QtCore/QEventLoop>
#include <QtCore/QObject>

#include <gtest/gtest.h>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioImporter.h"
#include "audio/files/Concatenation.h"
#include "audio/files/WavConversion.h"
#include "audio/files/Waveform.h"
#include "audio/playback/PlaybackSource.h"
#include "audio/recording/RecordingWriter.h"

namespace orlenta::audio::test {
namespace {

/// Two files that differ only in what can't be sound: one holds it, the other silence in its place. Whatever is made of
/// them has to be the same.
class SampleCleaningTest : public ::testing::TestWithParam<int> {
protected:
    SampleCleaningTest() {
        constexpr std::array<double, 6> garbage{NAN, HUGE_VAL, -HUGE_VAL, 1e30, -1e30, -NAN};
        for (size_t i = 0; i < dirty.size(); i += 997) {
            dirty[i] = garbage[(i / 997) % garbage.size()];
            clean[i] = 0.0;
        }
    }
    [[nodiscard]] QString write(const QString &name, const std::vector<double> &samples) const {
        return folder.write(name, samples, {44100, 1, GetParam()});
    }
    [[nodiscard]] QString path(const QString &name) const { return folder.path(name); }

    const AudioTestFolder folder;
    std::vector<double> clean = noise(44100, 16);
    std::vector<double> dirty = clean;
};

TEST_P(SampleCleaningTest, ReadersGiveSilenceInItsPlace) {
    EXPECT_EQ(readAll(write(QStringLiteral("in"), dirty)), clean);
    auto reader = AudioFileReader::open(path(QStringLiteral("in")));
    ASSERT_TRUE(reader);
    std::vector<float> asFloat(clean.size());
    ASSERT_EQ(reader.value().readFrames(std::span(asFloat)).value(), static_cast<qsizetype>(clean.size()));
    EXPECT_EQ(std::vector<double>(asFloat.begin(), asFloat.end()), clean);
}

TEST_P(SampleCleaningTest, WaveformsShowTheRest) {
    const auto bars = extractWaveform(QUrl::fromLocalFile(write(QStringLiteral("dirty"), dirty)));
    EXPECT_EQ(bars, extractWaveform(QUrl::fromLocalFile(write(QStringLiteral("clean"), clean))));
    EXPECT_GT(*std::ranges::min_element(bars), 0.5F);
}

TEST_P(SampleCleaningTest, WhatConvertersMakeHoldsNoTraceOfIt) {
    std::map<QString, std::vector<QByteArray>> made;
    for (const auto &[name, samples] :
         {std::pair(QStringLiteral("dirty"), dirty), std::pair(QStringLiteral("clean"), clean)}) {
        const QUrl source = QUrl::fromLocalFile(write(name + QStringLiteral(".wav"), samples));
        const QUrl imported = QUrl::fromLocalFile(path(name + QStringLiteral("-imported.wav")));
        ASSERT_TRUE(AudioImporter::importDirectionAudio(source, imported));
        const QUrl joined = QUrl::fromLocalFile(path(name + QStringLiteral("-joined.wav")));
        ASSERT_TRUE(concatenateAudio({source, imported}, joined));
        const auto converted = convertToWAV(source.toLocalFile(), QStringLiteral("tts"), 48000.0, 24, folder.folder());
        ASSERT_TRUE(converted);
        made[name] = {bytesOf(imported.toLocalFile()), bytesOf(joined.toLocalFile()), bytesOf(*converted)};
    }
    EXPECT_EQ(made[QStringLiteral("dirty")], made[QStringLiteral("clean")]);
}

TEST_P(SampleCleaningTest, NoOutputIsGivenIt) {
    const auto played = [&](const QString &file, double deviceRate) {
        auto reader = std::make_shared<AudioFileReader>(std::move(AudioFileReader::open(file)).value());
        PlaybackSource source({reader, 44100, 1, 0}, deviceRate);
        std::vector<float> all(2 * clean.size());
        qsizetype filled = 0;
        for (auto read = source.read(all); read && *read > 0;
             read = source.read(std::span(all).subspan(static_cast<size_t>(filled))))
            filled += *read;
        return all;
    };
    for (const double rate : {44100.0, 48000.0}) {
        const auto heard = played(write(QStringLiteral("dirty"), dirty), rate);
        EXPECT_EQ(heard, played(write(QStringLiteral("clean"), clean), rate));
        EXPECT_TRUE(std::ranges::all_of(heard, [](float sample) { return std::abs(sample) <= 1.0F; }));
    }
}

INSTANTIATE_TEST_SUITE_P(In, SampleCleaningTest, ::testing::Values(wavFloat, wavDouble));

TEST(SampleCleaning, AFloatingPointFileThatIsTooLoudPlaysAtFullScale) {
    const AudioTestFolder folder;
    const QString file = folder.write(QStringLiteral("loud.wav"), {0.5, 1.5, -40000.0}, {48000, 1, wavFloat});
    PlaybackSource source(
        {std::make_shared<AudioFileReader>(std::move(AudioFileReader::open(file)).value()), 48000, 1, 0}, 48000);
    std::vector<float> heard(3);
    ASSERT_TRUE(source.read(heard));
    EXPECT_EQ(heard, (std::vector<float>{0.5F, 1.0F, -1.0F}));
}

TEST(SampleCleaning, ARecordingKeepsWhatABrokenInputDeliversOutOfItsConversion) {
    const AudioTestFolder folder;
    std::map<QString, QByteArray> files;
    for (const float damage : {NAN, 0.0F}) {
        const QString path =
            folder.path(std::isnan(damage) ? QStringLiteral("dirty.wav") : QStringLiteral("clean.wav"));
        std::vector<float> samples(9600, 0.25F);
        samples[4000] = damage;
        QObject receiver;
        QEventLoop loop;
        auto writer = RecordingWriter::create(path, 48000,
                                              {&receiver, [&](qint64) { loop.quit(); },
                                               [&](const AudioFileError &error) {
                                                   ADD_FAILURE() << error.description().toStdString();
                                                   loop.quit();
                                               }});
        ASSERT_TRUE(writer);
        writer.value()->append(samples);
        writer.value()->finish();
        loop.exec();
        files[path] = bytesOf(path);
    }
    EXPECT_EQ(files[folder.path(QStringLiteral("dirty.wav"))], files[folder.path(QStringLiteral("clean.wav"))]);
}

} // namespace
} // namespace orlenta::audio::test
