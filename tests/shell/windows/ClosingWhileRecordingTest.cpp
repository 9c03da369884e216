#include <gtest/gtest.h>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QMessageBox>

#include "controller/script/LineEditing.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/SoundServerSession.h"

namespace orlenta::shell {
namespace {

using testing::waitUntil;

/// A window of a project whose first line is being recorded.
class ClosingWhileRecordingTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(server.failure(), QString());
        folder = session.makeProject(QStringLiteral("Take"), {QStringLiteral("Hello.")}).folder;
        ASSERT_TRUE(windows.openProject(folder));
        ASSERT_TRUE(waitUntil([this] { return session.sound.state() == audio::SoundServer::State::Ready; }));
        recordings().start(lineId());
        ASSERT_TRUE(waitUntil([this] { return recordings().state(lineId()).duration > 0.1; }));
    }
    [[nodiscard]] ProjectWindowController &project() const { return *windows.open().front(); }
    [[nodiscard]] controller::DirectionRecordings &recordings() const { return project().session().recordings(); }
    [[nodiscard]] model::LineId lineId() const { return project().controller().project().linesInOrder().at(0)->lineId; }
    [[nodiscard]] QMessageBox *confirmation() const {
        const auto boxes = project().window().findChildren<QMessageBox *>();
        return boxes.isEmpty() ? nullptr : boxes.constFirst();
    }
    [[nodiscard]] qsizetype takesOnDisk() const {
        const auto loaded = model::ProjectStore::load(folder, {});
        return loaded ? loaded->project.linesInOrder().at(0)->sourceRecordings.size() : -1;
    }

    testing::SoundServerSession server{testing::SoundServerSession::Kind::PulseAudio};
    testing::ShellSession session{QStringLiteral(ORLENTA_LOCAL_VOICES), server.address()};
    ProjectWindows windows{session.context};
    QString folder;
};

TEST_F(ClosingWhileRecordingTest, ClosingAWindowEndsTheTakeAndAsksToSaveIt) {
    EXPECT_FALSE(project().window().close());
    EXPECT_FALSE(project().window().close());
    ASSERT_TRUE(waitUntil([this] { return confirmation() != nullptr; }));
    testing::buttonNamed(*confirmation(), QStringLiteral("Save"))->click();
    ASSERT_TRUE(waitUntil([this] { return windows.isEmpty(); }));
    EXPECT_EQ(takesOnDisk(), 1);
}

TEST_F(ClosingWhileRecordingTest, ClosingRightAfterStoppingWaitsForTheTake) {
    recordings().stop(lineId());
    EXPECT_FALSE(project().window().close());
    ASSERT_TRUE(waitUntil([this] { return confirmation() != nullptr; }));
    EXPECT_EQ(project().controller().project().linesInOrder().at(0)->sourceRecordings.size(), 1);
    testing::buttonNamed(*confirmation(), QStringLiteral("Cancel"))->click();
    EXPECT_EQ(windows.open().size(), 1U);
    recordings().start(lineId());
    EXPECT_TRUE(waitUntil([this] { return recordings().state(lineId()).isRecording; }));
}

TEST_F(ClosingWhileRecordingTest, QuittingAsksToSaveTheTake) {
    std::optional<ProjectWindowController::CloseOutcome> outcome;
    windows.resolveUnsavedProjects([&outcome](ProjectWindowController::CloseOutcome reported) { outcome = reported; });
    ASSERT_TRUE(waitUntil([this] { return confirmation() != nullptr; }));
    testing::buttonNamed(*confirmation(), QStringLiteral("Save"))->click();
    EXPECT_EQ(outcome, ProjectWindowController::CloseOutcome::Proceed);
    EXPECT_EQ(takesOnDisk(), 1);
}

} // namespace
} // namespace orlenta::shell
