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

} // namespace

TEST(TemporarySweep, OnlyOldFilesOfTheApplicationsOwnNamesGo) {
    const QTemporaryDir temporary;
    const QString uuid = QStringLiteral("0aB1c2D3-1111-2222-3333-444455556666");
    struct Case {
        QString name;
        int ageInDays;
        bool stays;
    };
    const QList<Case> cases{
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
        {QStringLiteral("OrlentaDrag/clip.wav"), 8, false},
        {QStringLiteral("OrlentaDrag/fresh.wav"), 1, true},
        {QStringLiteral("OrlentaDirectionAudioUndo/deep/new.wav"), 0, false},
    };
    for (const Case &c : cases)
        makeFile(temporary.filePath(c.name), c.ageInDays);
    sweepTemporaryFiles(temporary.path(), std::chrono::system_clock::now());
    for (const Case &c : cases)
        EXPECT_EQ(QFile::exists(temporary.filePath(c.name)), c.stays) << c.name.toStdString();
    EXPECT_FALSE(QFile::exists(temporary.filePath(QStringLiteral("OrlentaDirectionAudioUndo"))));
}

TEST(TemporarySweep, ALinkGoesWithoutWhatItPointsTo) {
    const QTemporaryDir temporary;
    const QTemporaryDir elsewhere;
    makeFile(elsewhere.filePath(QStringLiteral("keep.wav")), 30);
    QFile::link(elsewhere.path(), temporary.filePath(QStringLiteral("OrlentaDirectionAudioUndo")));
    QFile::link(elsewhere.path(), temporary.filePath(QStringLiteral("OrlentaDrag")));
    sweepTemporaryFiles(temporary.path(), std::chrono::system_clock::now());
    EXPECT_TRUE(QFile::exists(elsewhere.filePath(QStringLiteral("keep.wav"))));
}

} // namespace orlenta::controller
