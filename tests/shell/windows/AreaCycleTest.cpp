#include "shell/windows/AreaCycle.h"

#include <gtest/gtest.h>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTabBar>

#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/inspector/Inspector.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectToolbar.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"

namespace orlenta {
namespace {

using controller::CommandId;

TEST(AreaCycle, TheKeyGoesRoundAllAreasOfTheWindowAndBack) {
    testing::ShellSession session;
    shell::ProjectWindows windows(session.context);
    const model::StoredProject stored =
        session.makeProject(QStringLiteral("Areas"), {QStringLiteral("Clara: Good morning.")});
    ASSERT_TRUE(windows.openProject(stored.folder));
    shell::ProjectWindow &window = windows.open().front()->window();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    shell::ScriptEditor &editor = window.editor();
    editor.list().setFocus();
    const QList<QWidget *> areas{&window.inspector(), &window.toolbar(), &editor.tabBar(), &editor.list()};
    const auto isIn = [](const QWidget *area) {
        const QWidget *focus = QApplication::focusWidget();
        return focus != nullptr && (area == focus || area->isAncestorOf(focus));
    };
    for (int round = 0; round < 2; ++round)
        for (const QWidget *area : areas) {
            testing::pressKeyOf(CommandId::NextArea);
            EXPECT_TRUE(isIn(area)) << area->metaObject()->className();
        }
    // An area gives the focus back to the control that had it.
    testing::pressKeyOf(CommandId::NextArea);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    const QWidget *left = QApplication::focusWidget();
    ASSERT_TRUE(isIn(&window.inspector()));
    testing::pressKeyOf(CommandId::NextArea);
    testing::pressKeyOf(CommandId::PreviousArea);
    EXPECT_EQ(QApplication::focusWidget(), left);
    testing::pressKeyOf(CommandId::PreviousArea);
    for (auto area = areas.rbegin() + 1; area != areas.rend(); ++area) {
        testing::pressKeyOf(CommandId::PreviousArea);
        EXPECT_TRUE(isIn(*area)) << (*area)->metaObject()->className();
    }
}

} // namespace
} // namespace orlenta
