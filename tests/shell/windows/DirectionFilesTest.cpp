#include <gtest/gtest.h>
#include <QtCore/QDataStream>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>

#include "base/files/PrivateFolders.h"
#include "controller/direction/DirectionAudio.h"
#include "controller/document/Notices.h"
#include "controller/script/LineEditing.h"
#include "controller/takes/LineRuntime.h"
#include "shell/editor/NoticeBar.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/FileSizeLimit.h"
#include "support/SoundServerSession.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using testing::buttonNamed;
using testing::waitUntil;

/// A file that takes minutes to import and next to no room: hours of silence in a hole.
QUrl writeHours(const QString &path, quint32 hours) {
    constexpr quint32 rate = 8000;
    const quint32 bytes = hours * 3600 * rate * 2;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    QDataStream header(&file);
    header.setByteOrder(QDataStream::LittleEndian);
    header.writeRawData("RIFF", 4);
    header << quint32(36 + bytes);
    header.writeRawData("WAVEfmt ", 8);
    header << quint32(16) << quint16(1) << quint16(1) << rate << quint32(rate * 2) << quint16(2) << quint16(16);
    header.writeRawData("data", 4);
    header << bytes;
    return file.resize(44 + qint64(bytes)) ? QUrl::fromLocalFile(path) : QUrl();
}

class DirectionFilesTest : public ::testing::Test {
protected:
    explicit DirectionFilesTest(const QString &soundServer = {})
        : session(QStringLiteral(ORLENTA_LOCAL_VOICES), soundServer) {
        EXPECT_TRUE(windows.openProject(session.makeProject(u"Scene"_s, {u"One."_s, u"Two."_s}).folder));
    }
    ~DirectionFilesTest() override { project().controller().discardChanges(); }

    [[nodiscard]] ProjectWindowController &project() const { return *windows.open().front(); }
    [[nodiscard]] ProjectWindow &window() const { return project().window(); }
    [[nodiscard]] const model::LineId &lineId() const { return project().controller().scriptLineIds().first(); }
    [[nodiscard]] const model::ProjectLine &line() const { return *project().controller().lines().find(lineId()); }
    [[nodiscard]] QString notice() const {
        const auto current = project().controller().notices().current();
        return current ? current->text : QString();
    }
    [[nodiscard]] QStringList storedRecordings() const {
        return QDir(session.path(u"Scene/Audio Files/Recordings"_s)).entryList(QDir::Files);
    }

    testing::ShellSession session;
    ProjectWindows windows{session.context};
};

TEST_F(DirectionFilesTest, ALongImportShowsItsProgressAndCanBeCancelledWithoutATrace) {
    const QUrl hours = writeHours(session.path(u"hours.wav"_s), 3);
    const QStringList before = QDir(base::PrivateFolders::temporary()).entryList(QDir::Files);
    for (const bool isDropped : {false, true}) {
        controller::DirectionAudio &direction = project().controller().directionAudio();
        if (isDropped)
            direction.importDroppedFile(hours, lineId());
        else
            direction.importDirectionAudio(hours, lineId());
        QAbstractButton *cancel = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            cancel = buttonNamed(window(), u"Cancel"_s);
            return cancel != nullptr;
        }));
        EXPECT_EQ(cancel->accessibleName(), u"Cancel import"_s);
        EXPECT_NE(cancel->focusPolicy() & Qt::TabFocus, 0);
        EXPECT_EQ(testing::clippedTexts(*cancel->parentWidget()), QStringList());
        const auto *bar = cancel->parentWidget()->findChild<QProgressBar *>();
        EXPECT_TRUE(waitUntil([bar] { return bar->value() > 0; }));
        EXPECT_LT(bar->value(), bar->maximum());
        cancel->click();
        ASSERT_TRUE(waitUntil([&] { return !direction.isBusy(); }));
        EXPECT_FALSE(cancel->isVisible());
        EXPECT_TRUE(line().sourceRecordings.isEmpty());
        EXPECT_EQ(notice(), QString());
        EXPECT_EQ(storedRecordings(), QStringList());
        EXPECT_TRUE(
            waitUntil([&] { return QDir(base::PrivateFolders::temporary()).entryList(QDir::Files) == before; }));
    }
    EXPECT_FALSE(project().controller().hasUnsavedChanges());
}

struct FullDiskSoundServer {
    testing::SoundServerSession soundServer{testing::SoundServerSession::Kind::PulseAudio};
};

class FullDiskTest : private FullDiskSoundServer, public DirectionFilesTest {
protected:
    FullDiskTest() : DirectionFilesTest(soundServer.address()) {}
    void SetUp() override {
        ASSERT_EQ(soundServer.failure(), QString());
        ASSERT_TRUE(waitUntil([this] { return session.devices.isInputAvailable(u"mic_a"_s); }));
        session.defaults.setInputDeviceUID(u"mic_a"_s);
    }
};

TEST_F(FullDiskTest, ARecordingThatFillsTheDiskIsShownWithItsPlaceAndOfferedAgain) {
    controller::DirectionRecordings &recordings = project().session().recordings();
    recordings.start(lineId());
    ASSERT_TRUE(waitUntil([&] { return recordings.state(lineId()).duration > 0.0; }));
    {
        const testing::FileSizeLimit limit(30'000);
        ASSERT_TRUE(waitUntil([&] { return !recordings.isRecording(); }));
    }
    ASSERT_EQ(recordings.kept().entries().size(), 1);
    const QString kept = recordings.kept().entries().first().file.toLocalFile();
    EXPECT_TRUE(QFile::exists(kept));
    EXPECT_TRUE(notice().startsWith(u"Recording error: "_s)) << qPrintable(notice());
    EXPECT_TRUE(notice().endsWith(u"The recording is kept in "_s + kept)) << qPrintable(notice());

    // Another take, on another line, leaves the message alone.
    const model::LineId other = project().controller().scriptLineIds().last();
    recordings.start(other);
    ASSERT_TRUE(waitUntil([&] { return recordings.state(other).duration > 0.1; }));
    recordings.stop(other);
    ASSERT_TRUE(waitUntil([&] { return project().session().isSettled(); }));
    EXPECT_TRUE(notice().endsWith(kept));

    NoticeBar &bar = *window().editor().findChild<NoticeBar *>();
    const testing::FileManager files;
    buttonNamed(bar, u"Show in Folder"_s)->click();
    EXPECT_EQ(files.shown, QList<QUrl>{QUrl::fromLocalFile(base::PrivateFolders::caches())});
    buttonNamed(bar, u"Use Recording"_s)->click();
    ASSERT_TRUE(waitUntil([this] { return line().sourceRecordings.size() == 1; }));
    EXPECT_GT(line().sourceRecordings.first().durationSeconds, 0.1);
    EXPECT_LT(line().sourceRecordings.first().durationSeconds, 0.4) << "the length of what is in the file";
    EXPECT_FALSE(project().controller().runtime().state(lineId()).directionAudioURL.isEmpty());
    EXPECT_TRUE(waitUntil([this] { return notice().isEmpty(); }));
    EXPECT_FALSE(QFile::exists(kept));
}

TEST_F(FullDiskTest, ARecordingThatItsProjectHasNoRoomForIsOfferedUntilItHas) {
    controller::DirectionRecordings &recordings = project().session().recordings();
    const QString folder = session.path(u"Scene/Audio Files/Recordings"_s);
    ASSERT_TRUE(QDir(folder).removeRecursively());
    QFile blocker(folder);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    recordings.start(lineId());
    ASSERT_TRUE(waitUntil([&] { return recordings.state(lineId()).duration > 0.1; }));
    recordings.stop(lineId());
    ASSERT_TRUE(waitUntil([&] { return recordings.kept().entries().size() == 1; }));
    const QString told = notice();
    EXPECT_TRUE(told.startsWith(u"Audio import failed: "_s)) << qPrintable(told);
    buttonNamed(*window().editor().findChild<NoticeBar *>(), u"Use Recording"_s)->click();
    EXPECT_TRUE(waitUntil([&] { return project().session().isSettled(); }));
    EXPECT_EQ(notice(), told);
    ASSERT_TRUE(blocker.remove());
    buttonNamed(*window().editor().findChild<NoticeBar *>(), u"Use Recording"_s)->click();
    EXPECT_TRUE(waitUntil([this] { return line().sourceRecordings.size() == 1; }));
    EXPECT_TRUE(waitUntil([this] { return notice().isEmpty(); }));
}

} // namespace
} // namespace orlenta::shell
