#include "controller/takes/TemporarySweep.h"

#include <gtest/gtest.h>
#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace orlenta::controller {
namespace {

void makeFile(const QString &path, int ageInDays) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("audio");
    file.flush();
    file.setFileTime(QDateTime::currentDateTimeUtc().addDays(-ageInDays), QFileDevice::FileModificationTime);
}

struct SweptFile {
    QString name;
    int ageInDays;
    bool stays;
};

using Sweep = void (*)(const QString &folder, std::chrono::system_clock::time_point now);

void expectSwept(const QTemporaryDir &folder, const QList<SweptFile> &files, Sweep sweep) {
    for (const SweptFile &file : files)
        makeFile(folder.filePath(file.name), file.ageInDays);
    sweep(folder.path(), std::chrono::system_clock::now());
    for (const SweptFile &file : files)
        EXPECT_EQ(QFile::exists(folder.filePath(file.name)), file.stays) << file.name.toStdString();
}

} // namespace

TEST(TemporarySweep, OnlyOldFilesOfTheApplicationsOwnNamesGo) {
    const QTemporaryDir temporary;
    const QString uuid = QStringLiteral("0aB1c2D3-1111-2222-3333-444455556666");
    const QList<SweptFile> cases{
        {QStringLiteral("tts_%1.wav").arg(uuid), 8, false},
        {QStringLiteral("tts_%1.wav").arg(uuid.toUpper()), 6, true},
        {QStringLiteral("sts_src_%1.mp3").arg(uuid), 8, false},
        {QStringLiteral("voice_preview_%1.wav").arg(uuid), 8, false},
        {QStringLiteral("direction_%1.x").arg(uuid), 100, false},
        {QStringLiteral("padded_%1.abcde").arg(uuid), 8, false},
        {QStringLiteral("padded_%1.abcdef").arg(uuid), 8, true},
        {QStringLiteral("tts_holiday.wav"), 400, true},
        {QStringLiteral("my tts_%1.wav").arg(uuid), 400, true},
        {QStringLiteral("tts_%1.wav.bak").arg(uuid), 400, true},
        {QStringLiteral("OrlentaDroppedAudio-%1.aiff").arg(uuid), 8, false},
        {QStringLiteral("OrlentaDroppedAudio-%1.wav.tmp").arg(uuid), 8, false},
        {QStringLiteral("OrlentaDroppedAudio-%1.wav").arg(uuid), 6, true},
        {QStringLiteral("OrlentaDrag/clip.wav"), 8, false},
        {QStringLiteral("OrlentaDrag/fresh.wav"), 1, true},
        {QStringLiteral("OrlentaStitchedAudio/continuous.wav"), 8, false},
        {QStringLiteral("OrlentaStitchedAudio/fresh.wav"), 1, true},
        {QStringLiteral("OrlentaDirectionAudioUndo/deep/new.wav"), 0, false},
    };
    expectSwept(temporary, cases, &sweepTemporaryFolder);
    EXPECT_FALSE(QFile::exists(temporary.filePath(QStringLiteral("OrlentaDirectionAudioUndo"))));
}

TEST(TemporarySweep, GeneratedAudioThatACrashLeftInTheCachesGoesAndRecordingsStay) {
    const QTemporaryDir caches;
    const QString uuid = QStringLiteral("0AB1C2D3-1111-2222-3333-444455556666");
    expectSwept(caches,
                {{QStringLiteral("tts_%1.wav").arg(uuid), 8, false},
                 {QStringLiteral("tts_%1.wav.tmp").arg(uuid), 8, false},
                 {QStringLiteral("sts_src_%1.mp3").arg(uuid), 8, false},
                 {QStringLiteral("voice_preview_%1.mp3").arg(uuid), 8, false},
                 {QStringLiteral("sts_%1.wav").arg(uuid), 6, true},
                 {QStringLiteral("direction_%1.wav").arg(uuid), 400, true},
                 {QStringLiteral("holiday - direction 1 - 0ab1c2d3.wav"), 400, true}},
                &sweepCaches);
}

TEST(TemporarySweep, ALinkGoesWithoutWhatItPointsTo) {
    const QTemporaryDir temporary;
    const QTemporaryDir elsewhere;
    makeFile(elsewhere.filePath(QStringLiteral("keep.wav")), 30);
    QFile::link(elsewhere.path(), temporary.filePath(QStringLiteral("OrlentaDirectionAudioUndo")));
    QFile::link(elsewhere.path(), temporary.filePath(QStringLiteral("OrlentaDrag")));
    sweepTemporaryFolder(temporary.path(), std::chrono::system_clock::now());
    EXPECT_TRUE(QFile::exists(elsewhere.filePath(QStringLiteral("keep.wav"))));
}

} // namespace orlenta::controller
