#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtGui/QAction>
#include <QtTest/QTest>
#include <QtWidgets/QToolButton>

#include "controller/document/Notices.h"
#include "controller/script/LineEditing.h"
#include "controller/takes/TakeEditing.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/menus/ProjectActions.h"
#include "shell/ShellSession.h"
#include "shell/windows/ErrorAlerts.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/SoundServerSession.h"
#include "support/TestTone.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using testing::waitUntil;

/// A window of a project whose first line has a long take and a direction.
class PlayingTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(server.failure(), QString());
        ASSERT_TRUE(windows.openProject(session.makeProject(u"Heard"_s, {u"Hello."_s, u"Bye."_s}).folder));
        ASSERT_TRUE(waitUntil([this] { return session.sound.state() == audio::SoundServer::State::Ready; }));
        controller::TakeEditing &takes = project().controller().takes();
        QCoro::waitFor(takes.installGeneratedAudio(
            testing::writeTone(session.path(u"take.wav"_s), 60.0).toLocalFile(), lineId(),
            takes.generationContext(*project().controller().project().linesInOrder().at(0))));
        ASSERT_TRUE(actions()[CommandId::Play]->isEnabled());
    }
    void TearDown() override { project().controller().discardChanges(); }

    [[nodiscard]] ProjectWindowController &project() const { return *windows.open().front(); }
    [[nodiscard]] const audio::PlaybackController &playback() const { return project().playbackController(); }
    [[nodiscard]] ScriptEditor &editor() const { return project().window().editor(); }
    [[nodiscard]] const ProjectActions &actions() const { return project().window().actions(); }
    [[nodiscard]] model::LineId lineId() const { return project().controller().project().linesInOrder().at(0)->lineId; }
    template <typename Widget>
    [[nodiscard]] Widget *control(const QString &name) const {
        for (Widget *widget : editor().list().rowFor(lineId())->template findChildren<Widget *>())
            if (widget->accessibleName() == name)
                return widget;
        return nullptr;
    }
    [[nodiscard]] WaveformBarsView &waveform() const { return *control<WaveformBarsView>(u"Playhead of line 1"_s); }
    [[nodiscard]] QString notice() const {
        const auto current = project().controller().notices().current();
        return current ? current->text : QString();
    }
    void pressSpace() {
        editor().list().setFocus();
        QTest::keyClick(&editor().list(), Qt::Key_Space);
    }

    testing::SoundServerSession server{testing::SoundServerSession::Kind::PulseAudio};
    testing::ShellSession session{QStringLiteral(ORLENTA_LOCAL_VOICES), server.address()};
    ProjectWindows windows{session.context};
};

TEST_F(PlayingTest, EveryWayOfStoppingHidesThePlayhead) {
    const QList<std::function<void()>> ways{[this] { actions()[CommandId::Play]->trigger(); }, [this] { pressSpace(); },
                                            [this] { control<QToolButton>(u"Stop line 1"_s)->click(); }};
    for (const auto &stop : ways) {
        QTest::mouseClick(&waveform(), Qt::LeftButton, {}, QPoint(waveform().width() / 2, 3));
        ASSERT_TRUE(playback().isPlaying());
        EXPECT_TRUE(waitUntil([this] { return waveform().progress() > 0.5; }));
        stop();
        EXPECT_FALSE(playback().isPlaying());
        EXPECT_FALSE(playback().currentlyPlayingLineID().has_value());
        EXPECT_FALSE(waveform().showsProgress());
        EXPECT_EQ(waveform().progress(), 0.0);
    }
}

TEST_F(PlayingTest, PlayingIsRefusedWithAMessageWhileRecording) {
    ScriptCommands &commands = editor().commands();
    actions()[CommandId::Play]->trigger();
    ASSERT_TRUE(playback().isPlaying());
    const model::LineId other = project().controller().project().linesInOrder().at(1)->lineId;
    commands.direction().carryOut(CommandId::Record, other, &editor());
    EXPECT_FALSE(playback().isPlaying());
    ASSERT_TRUE(waitUntil([&] { return project().session().recordings().state(other).duration > 0.1; }));
    const QList<std::function<void()>> ways{
        [this] { actions()[CommandId::Play]->trigger(); }, [this] { actions()[CommandId::PlayAll]->trigger(); },
        [this] { pressSpace(); }, [this] { control<QToolButton>(u"Play line 1"_s)->click(); },
        [this] { QTest::mouseClick(&waveform(), Qt::LeftButton); }};
    for (const auto &play : ways) {
        project().controller().notices().withdraw(controller::Notice::Kind::PlayingRefused);
        play();
        EXPECT_FALSE(playback().isPlaying());
        EXPECT_EQ(notice(), u"Stop the recording before playing."_s);
    }
    EXPECT_TRUE(project().session().recordings().isRecording());
    project().session().recordings().stop(other);
    ASSERT_TRUE(waitUntil([&] { return project().session().isSettled(); }));
    EXPECT_EQ(notice(), QString());
    actions()[CommandId::Play]->trigger();
    EXPECT_TRUE(playback().isPlaying());
}

TEST_F(PlayingTest, ATakeInAnotherWindowStopsWhatPlaysAndKeepsTheMessageUntilItEnds) {
    ASSERT_TRUE(windows.openProject(session.makeProject(u"Spoken"_s, {u"Hello."_s}).folder));
    ProjectWindowController &other = *windows.open().back();
    controller::DirectionRecordings &recordings = other.session().recordings();
    actions()[CommandId::Play]->trigger();
    ASSERT_TRUE(playback().isPlaying());
    const model::LineId line = other.controller().scriptLineIds().first();
    recordings.start(line);
    ASSERT_TRUE(waitUntil([&] { return recordings.state(line).duration > 0.1; }));
    EXPECT_FALSE(playback().isPlaying());
    actions()[CommandId::Play]->trigger();
    EXPECT_FALSE(playback().isPlaying());
    EXPECT_EQ(notice(), u"Stop the recording before playing."_s);
    EXPECT_EQ(project().window().alerts().box(), nullptr);

    // There is one recorder: a take here ends the one there, which goes on its line.
    project().session().recordings().start(lineId());
    EXPECT_TRUE(waitUntil([&] { return other.controller().lines().find(line)->sourceRecordings.size() == 1; }));
    EXPECT_FALSE(recordings.isRecording());
    ASSERT_TRUE(waitUntil([&] { return project().session().recordings().state(lineId()).duration > 0.1; }));
    project().session().recordings().stop(lineId());
    ASSERT_TRUE(waitUntil([&] { return project().session().isSettled(); }));
    EXPECT_EQ(notice(), QString());
    other.controller().discardChanges();
}

} // namespace
} // namespace orlenta::shell
