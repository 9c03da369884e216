#include "shell/windows/RecordingMark.h"

#include <gtest/gtest.h>
#include <QtCore/QCoreApplication>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLabel>

#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/row/LineRow.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/SoundServerSession.h"

namespace orlenta::shell {
namespace {

using testing::buttonNamed;
using testing::waitUntil;

TEST(RecordingMark, ShowsTheTakeFromAnyTabAndCanGoToItsLineAndStopIt) {
    testing::SoundServerSession server(testing::SoundServerSession::Kind::PulseAudio);
    ASSERT_EQ(server.failure(), QString());
    testing::ShellSession session(QString(), server.address());
    ProjectWindows windows(session.context);
    QStringList texts(30, QStringLiteral("A line."));
    ASSERT_TRUE(windows.openProject(session.makeProject(QStringLiteral("Take"), texts).folder));
    ASSERT_TRUE(waitUntil([&] { return session.sound.state() == audio::SoundServer::State::Ready; }));
    controller::ProjectController &project = windows.open().front()->controller();
    ScriptEditor &editor = windows.open().front()->window().editor();
    const auto *mark = windows.open().front()->window().findChild<RecordingMark *>();
    ASSERT_NE(mark, nullptr);
    EXPECT_EQ(buttonNamed(*mark, QStringLiteral("Stop")), nullptr);
    const int height = editor.height();

    const model::LineId id = project.scriptLineIds().last();
    windows.open().front()->session().recordings().start(id);
    ASSERT_TRUE(waitUntil([&] { return buttonNamed(*mark, QStringLiteral("Recording line 30")) != nullptr; }));
    EXPECT_EQ(editor.height(), height);
    EXPECT_TRUE(waitUntil([&] { return mark->findChild<QLabel *>()->text() == QStringLiteral("0:01"); }));
    EXPECT_TRUE(testing::unnamedControls(*mark).isEmpty());
    EXPECT_TRUE(testing::clippedTexts(*mark).isEmpty());

    project.tabs().addTab();
    QAbstractButton *line = buttonNamed(*mark, QStringLiteral("Recording line 30 of Script 1"));
    ASSERT_NE(line, nullptr);
    EXPECT_NE(line->focusPolicy() & Qt::TabFocus, 0);
    ProjectWindow &window = windows.open().front()->window();
    project.tabs().renameTab(project.project().tabs.constFirst().id, QString(60, QLatin1Char('M')));
    for (const double scale : {1.0, 1.5, 2.0}) {
        Theme::setUiScale(scale);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        window.resize(window.minimumSize());
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        EXPECT_EQ(testing::clippedTexts(*mark->parentWidget()), QStringList()) << scale;
    }
    Theme::setUiScale(1.0);
    window.resize(1000, 700);
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    line->click();
    EXPECT_EQ(project.scriptLineIds().last(), id);
    EXPECT_EQ(project.selection().singleSelectedLineId(), id);
    ASSERT_NE(editor.list().rowFor(id), nullptr);
    EXPECT_LT(editor.list().rowFor(id)->geometry().bottom(), editor.list().viewport()->height());

    buttonNamed(*mark, QStringLiteral("Stop"))->click();
    EXPECT_EQ(buttonNamed(*mark, QStringLiteral("Stop")), nullptr);
    EXPECT_TRUE(waitUntil([&] { return project.lines().find(id)->sourceRecordings.size() == 1; }));
}

} // namespace
} // namespace orlenta::shell
