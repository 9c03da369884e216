#include "shell/windows/ErrorAlerts.h"

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QWidget>

#include "controller/script/LineEditing.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "shell/menus/ProjectActions.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/TestTone.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using testing::waitUntil;

class ErrorAlertsTest : public ::testing::Test {
protected:
    void SetUp() override { window.show(); }
    void fail(AlertSource source, const QString &title) {
        alerts.show({source, title, u"Because."_s, [this, title] { dismissed.append(title); }});
    }
    [[nodiscard]] QString shown() const { return alerts.box() == nullptr ? QString() : alerts.box()->text(); }

    QWidget window;
    ErrorAlerts alerts{window};
    QStringList dismissed;
};

TEST_F(ErrorAlertsTest, FailuresAreShownOneAfterTheOther) {
    fail(AlertSource::Generation, u"First"_s);
    fail(AlertSource::Playback, u"Second"_s);
    fail(AlertSource::Save, u"Third"_s);
    fail(AlertSource::Playback, u"Second again"_s);
    alerts.withdraw(AlertSource::Save);
    EXPECT_EQ(shown(), u"First"_s);
    EXPECT_EQ(alerts.box()->windowTitle(), u"Orlenta"_s);
    EXPECT_EQ(alerts.box()->accessibleName(), u"First"_s);
    alerts.box()->accept();
    EXPECT_EQ(shown(), u"Second again"_s);
    alerts.withdraw(AlertSource::Playback);
    EXPECT_EQ(alerts.box(), nullptr);
    EXPECT_EQ(dismissed, QStringList{u"First"_s});
}

/// Reports another failure just when the box is hidden.
class FailureWhileClosing final : public QObject {
public:
    explicit FailureWhileClosing(std::function<void()> fail) : m_fail(std::move(fail)) {}
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (event->type() == QEvent::Hide && m_fail)
            std::exchange(m_fail, {})();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> m_fail;
};

TEST_F(ErrorAlertsTest, AFailureWhileTheBoxClosesGetsItsOwnBox) {
    fail(AlertSource::Playback, u"First"_s);
    FailureWhileClosing again([this] {
        fail(AlertSource::Playback, u"Second"_s);
        alerts.withdraw(AlertSource::Generation);
    });
    alerts.box()->installEventFilter(&again);
    alerts.box()->accept();
    EXPECT_EQ(dismissed, QStringList{u"First"_s});
    EXPECT_EQ(shown(), u"Second"_s);
    alerts.box()->accept();
    EXPECT_EQ(dismissed, QStringList({u"First"_s, u"Second"_s}));
}

TEST(ProjectWindowAlerts, APlaybackFailureWaitsUntilTheGenerationFailureIsDismissed) {
    testing::ShellSession session;
    ProjectWindows windows(session.context);
    ASSERT_TRUE(windows.openProject(session.makeProject(u"Failing"_s, {u"Clara: Hello."_s}).folder));
    ProjectWindowController &project = *windows.open().front();
    // No server listens on this port.
    project.elevenLabsService().useEndpoint(QUrl(u"http://127.0.0.1:1"_s));
    const ErrorAlerts &alerts = project.window().alerts();
    const auto line = [&project] { return *project.controller().project().linesInOrder().front(); };
    const QUrl take = testing::writeTone(session.path(u"take.wav"_s), 0.5);
    QCoro::waitFor(project.controller().takes().installGeneratedAudio(
        take.toLocalFile(), line().lineId, project.controller().takes().generationContext(line())));
    const QAction &play = *project.window().actions()[CommandId::Play];
    ASSERT_TRUE(play.isEnabled());

    project.session().generator().generateSelectedLines();
    ASSERT_TRUE(waitUntil([&alerts] { return alerts.box() != nullptr; }));
    EXPECT_EQ(alerts.box()->text(), u"Generation Failed"_s);
    EXPECT_FALSE(alerts.box()->informativeText().isEmpty());
    const QUrl file = project.controller().media().audioURL(line());
    ASSERT_TRUE(QFile::remove(file.toLocalFile()));
    project.window().actions()[CommandId::Play]->trigger();
    EXPECT_EQ(alerts.box()->text(), u"Generation Failed"_s);
    alerts.box()->accept();
    EXPECT_FALSE(project.session().generator().generateError().has_value());
    ASSERT_NE(alerts.box(), nullptr);
    EXPECT_EQ(alerts.box()->text(), u"Playback Failed"_s);
    EXPECT_TRUE(alerts.box()->informativeText().contains(file.fileName()))
        << qPrintable(alerts.box()->informativeText());
    EXPECT_FALSE(project.playbackController().isPlaying());
    alerts.box()->accept();
    EXPECT_EQ(alerts.box(), nullptr);
    project.controller().discardChanges();
}

} // namespace
} // namespace orlenta::shell
