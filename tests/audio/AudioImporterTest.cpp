#include "audio/files/AudioImporter.h"

#include <algorithm>
#include <sys/stat.h>

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "audio/AudioTestFiles.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/WavHeader.h"
#include "audio/ToneMeasurement.h"
#include "base/files/PrivateFolders.h"
#include "support/FileSizeLimit.h"

namespace orlenta::audio::test {
namespace {

QUrl fileURL(const QString &path) {
    return QUrl::fromLocalFile(path);
}

const AudioFileFormat standardFormat{48000, 1, AudioFileFormat::Coding::LinearPCM, 24};

TEST(AudioImporter, OnlyAFileInTheStandardFormatIsCopiedAsItIs) {
    const AudioTestFolder folder;
    struct CopyCase {
        QString name;
        StoredAs stored;
        bool isCopied;
    };
    const std::vector<CopyCase> cases{{QStringLiteral("TAKE.WAV"), {48000, 1, wav24}, true},
                                      {QStringLiteral("take.wave"), {48000, 1, wav24}, true},
                                      {QStringLiteral("float.wav"), {48000, 1, wavFloat}, false},
                                      {QStringLiteral("stereo.wav"), {48000, 2, wav24}, false},
                                      {QStringLiteral("short.wav"), {48000, 1, wav16}, false},
                                      {QStringLiteral("rate.wav"), {47999, 1, wav24}, false},
                                      {QStringLiteral("named.aiff"), {48000, 1, wav24}, false},
                                      {QStringLiteral("aiff.wav"), {48000, 1, aiff24}, false},
                                      {QStringLiteral("caf.wav"), {48000, 1, caf24}, false}};
    for (const auto &[name, stored, isCopied] : cases) {
        const QUrl source = fileURL(folder.write(name, noise(4800, 16), stored));
        EXPECT_EQ(AudioImporter::canCopyWithoutConversion(source), isCopied) << name.toStdString();
        const QString target = folder.path(QStringLiteral("Audio Files/Recordings/") + name + QStringLiteral(".wav"));
        const auto imported = AudioImporter::importDirectionAudio(source, fileURL(target));
        ASSERT_TRUE(imported) << name.toStdString();
        EXPECT_EQ(imported->url, fileURL(target));
        EXPECT_NEAR(imported->durationSeconds, 4800.0 / stored.channels / stored.rate, 1e-4);
        EXPECT_TRUE(bytesOf(target).startsWith("RIFF")) << name.toStdString();
        if (isCopied) {
            EXPECT_EQ(bytesOf(target), bytesOf(source.toLocalFile())) << name.toStdString();
        }
        const auto reader = AudioFileReader::open(target);
        ASSERT_TRUE(reader);
        EXPECT_EQ(reader->format(), standardFormat);
    }
}

TEST(AudioImporter, CompressedFilesBecomeTheStandardFormatUnderTheDestinationsName) {
    const AudioTestFolder folder;
    folder.write(QStringLiteral("in.wav"), tone(997, 44100, 44100), {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -b 320 in.wav in.MP3"));
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a aac -b:a 192k -y in.m4a"));
    for (const char *name : {"in.MP3", "in.m4a"}) {
        const QString target = folder.path(QStringLiteral("direction.wav"));
        const auto imported =
            AudioImporter::importDirectionAudio(fileURL(folder.path(QString::fromLatin1(name))), fileURL(target));
        ASSERT_TRUE(imported) << name;
        EXPECT_DOUBLE_EQ(imported->durationSeconds, 1.0) << name;
        const auto samples = readAll(target);
        EXPECT_GT(measureTone(std::span(samples).subspan(4800, 38400), 997, 48000).sinad, 50.0) << name;
    }
    EXPECT_EQ(folder.names().filter(QStringLiteral("importing")), QStringList());
}

TEST(AudioImporter, ALongImportTellsItsProgressAndCanBeCalledOff) {
    const AudioTestFolder folder;
    const auto samples = noise(20 * 48000, 16);
    folder.write(QStringLiteral("copied.wav"), samples, {48000, 1, wav24});
    folder.write(QStringLiteral("converted.wav"), samples, {44100, 1, wav16});
    folder.run(QStringLiteral("lame"), QStringLiteral("--quiet -t -b 64 converted.wav untold.mp3")); // without a length
    const AudioTestFolder project;
    const QUrl target = fileURL(project.path(QStringLiteral("direction.wav")));
    for (const char *name : {"copied.wav", "converted.wav", "untold.mp3"}) {
        const QUrl source = fileURL(folder.path(QString::fromLatin1(name)));
        std::vector<double> told;
        ASSERT_TRUE(
            AudioImporter::importDirectionAudio(source, target, {{}, [&](double share) { told.push_back(share); }}));
        ASSERT_FALSE(told.empty()) << name;
        EXPECT_TRUE(std::ranges::is_sorted(told)) << name;
        EXPECT_GE(told.front(), 0.0) << name;
        EXPECT_GT(told.back(), 0.95) << name;
        EXPECT_LE(told.back(), 1.0) << name;

        const QByteArray before = bytesOf(target.toLocalFile());
        std::stop_source stop;
        stop.request_stop();
        const auto cancelled = AudioImporter::importDirectionAudio(source, target, {stop.get_token(), {}});
        ASSERT_FALSE(cancelled) << name;
        EXPECT_EQ(cancelled.error(), AudioImporterError::cancelled) << name;
        EXPECT_EQ(project.names(), QStringList{QStringLiteral("direction.wav")}) << name;
        EXPECT_EQ(bytesOf(target.toLocalFile()), before) << name;
    }
}

TEST(AudioImporter, ADestinationsNameMayBeAsLongAsTheFileSystemAllows) {
    const AudioTestFolder folder;
    const QUrl source = fileURL(folder.write(QStringLiteral("in.wav"), noise(4800, 16), {44100, 1, wav16}));
    const QString target = folder.path(QString(125, u'\u00e9') + QStringLiteral("x.wav"));
    ASSERT_EQ(QFileInfo(target).fileName().toUtf8().size(), 255);
    EXPECT_TRUE(AudioImporter::importDirectionAudio(source, fileURL(target)));
    EXPECT_TRUE(QFile::exists(target));
}

TEST(AudioImporter, ARefusedFileSaysWhyAndLeavesNothing) {
    const AudioTestFolder folder;
    const QUrl target = fileURL(folder.path(QStringLiteral("Recordings/direction.wav")));
    const QUrl flac = fileURL(folder.writeBytes(QStringLiteral("take.flac"), "fLaC"));
    const auto refused = AudioImporter::importDirectionAudio(flac, target);
    ASSERT_FALSE(refused);
    EXPECT_EQ(description(refused.error()),
              QStringLiteral("Couldn't import this file. Only WAV, MP3, M4A, and AIFF are supported."));
    EXPECT_FALSE(QFileInfo::exists(folder.path(QStringLiteral("Recordings"))));

    const QUrl text = fileURL(folder.writeBytes(QStringLiteral("text.wav"), "no sound"));
    const QUrl missing = fileURL(folder.path(QStringLiteral("missing.m4a")));
    const QUrl large = fileURL(folder.write(QStringLiteral("large.wav"), noise(60000, 16), {44100, 1, wav16}));
    const testing::FileSizeLimit limit(96 * 1024);
    for (const QUrl &source : {text, missing, large}) {
        const auto failed = AudioImporter::importDirectionAudio(source, target);
        ASSERT_FALSE(failed);
        EXPECT_EQ(description(failed.error()), QStringLiteral("Couldn't import this file."));
    }
    EXPECT_TRUE(folder.names().filter(QStringLiteral("Recordings/")).isEmpty());
}

TEST(AudioImporter, AFileWithoutASingleFrameIsNoTake) {
    const AudioTestFolder folder;
    const AudioTestFolder project;
    folder.writeBytes(QStringLiteral("copied.wav"), wavHeader(0, 48000, 1, 24));
    folder.writeBytes(QStringLiteral("converted.wav"), wavHeader(0, 44100, 2, 16));
    folder.write(QStringLiteral("empty.aiff"), {}, {48000, 1, aiff24});
    folder.write(QStringLiteral("in.wav"), noise(44100, 16), {44100, 1, wav16});
    folder.run(QStringLiteral("ffmpeg"), QStringLiteral("-i in.wav -c:a aac -movflags +faststart -y whole.m4a"));
    const QByteArray whole = bytesOf(folder.path(QStringLiteral("whole.m4a")));
    folder.writeBytes(QStringLiteral("cut.m4a"), whole.first(whole.indexOf("mdat") + 4));
    for (const char *name : {"copied.wav", "converted.wav", "empty.aiff", "cut.m4a"}) {
        const auto imported =
            AudioImporter::importDirectionAudio(fileURL(folder.path(QString::fromLatin1(name))),
                                                fileURL(project.path(QStringLiteral("Recordings/direction.wav"))));
        ASSERT_FALSE(imported) << name;
        EXPECT_EQ(imported.error(), AudioImporterError::importFailed) << name;
        EXPECT_EQ(project.names(), QStringList()) << name;
    }
}

TEST(AudioImporter, AFailureKeepsTheFileThatWasThere) {
    const AudioTestFolder folder;
    const QUrl target = fileURL(folder.writeBytes(QStringLiteral("direction.wav"), "old"));
    const QUrl text = fileURL(folder.writeBytes(QStringLiteral("text.wav"), "no sound"));
    EXPECT_FALSE(AudioImporter::importDirectionAudio(text, target));
    EXPECT_EQ(bytesOf(target.toLocalFile()), QByteArray("old"));
}

TEST(AudioImporter, ADroppedFileIsStagedUnderItsExtension) {
    const AudioTestFolder folder;
    const QUrl source = fileURL(folder.writeBytes(QStringLiteral("drop.aiff"), "bytes"));
    const auto lent = AudioImporter::openDroppedFile(source);
    ASSERT_TRUE(lent);
    ASSERT_TRUE(QFile::remove(source.toLocalFile()));
    std::stop_source stop;
    stop.request_stop();
    const auto before = QDir(base::PrivateFolders::temporary()).entryList(QDir::Files);
    const auto calledOff = AudioImporter::stageDroppedFile(lent.value(), {stop.get_token(), {}});
    ASSERT_FALSE(calledOff);
    EXPECT_EQ(calledOff.error(), AudioImporterError::cancelled);
    EXPECT_EQ(QDir(base::PrivateFolders::temporary()).entryList(QDir::Files), before);
    const auto staged = AudioImporter::stageDroppedFile(lent.value());
    ASSERT_TRUE(staged);
    EXPECT_TRUE(staged->fileName().startsWith(QStringLiteral("OrlentaDroppedAudio-")));
    EXPECT_TRUE(staged->fileName().endsWith(QStringLiteral(".aiff")));
    EXPECT_EQ(bytesOf(staged->toLocalFile()), QByteArray("bytes"));
    QFile::remove(staged->toLocalFile());
}

TEST(AudioImporter, WhatCannotBeImportedIsNotStaged) {
    const AudioTestFolder folder;
    ASSERT_EQ(::mkfifo(QFile::encodeName(folder.path(QStringLiteral("pipe.wav"))).constData(), 0600), 0);
    ASSERT_TRUE(QDir(folder.folder()).mkdir(QStringLiteral("folder.wav")));
    folder.writeBytes(QStringLiteral("film.mov"), "bytes");
    const QDir staged(base::PrivateFolders::temporary(), QStringLiteral("OrlentaDroppedAudio-*"));
    const QStringList before = staged.entryList();
    using Error = AudioImporterError;
    for (const auto &[name, error] :
         {std::pair("film.mov", Error::unsupportedFormat), std::pair("none", Error::unsupportedFormat),
          std::pair("pipe.wav", Error::importFailed), std::pair("folder.wav", Error::importFailed),
          std::pair("gone.wav", Error::importFailed)}) {
        const auto refused = AudioImporter::openDroppedFile(fileURL(folder.path(QString::fromLatin1(name))));
        ASSERT_FALSE(refused) << name;
        EXPECT_EQ(refused.error(), error) << name;
    }
    EXPECT_EQ(QDir(staged).entryList(), before);
}

} // namespace
} // namespace orlenta::audio::test
