#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

#include "controller/document/UndoManager.h"
#include "controller/script/TabEditing.h"
#include "shell/editor/ScriptEditorFixture.h"
#include "shell/editor/ScriptTabBar.h"

namespace orlenta::shell {
namespace {

class ScriptTabBarTest : public ScriptEditorFixture {
protected:
    void SetUp() override {
        open(projectWith({QStringLiteral("One.")}));
        controller->tabs().addTab();
        controller->tabs().addTab();
    }
    QTabBar &bar() { return editor->tabBar().bar(); }
    QStringList names() const {
        QStringList names;
        for (const model::ProjectTab &tab : controller->project().tabs)
            names.append(tab.name);
        return names;
    }
    QStringList shownNames() {
        QStringList names;
        for (int index = 0; index < bar().count(); ++index)
            names.append(bar().tabText(index));
        return names;
    }
};

TEST_F(ScriptTabBarTest, ShowsAndSwitchesTheProjectsTabs) {
    EXPECT_EQ(shownNames(), names());
    EXPECT_EQ(bar().currentIndex(), 2);
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, bar().tabRect(0).center());
    EXPECT_EQ(controller->project().activeTabId, controller->project().tabs.at(0).id);
    EXPECT_EQ(textAt(0), QStringLiteral("One."));
    EXPECT_EQ(rowAt(0)->textField().sourceText(), QStringLiteral("One."));
    bar().setFocus();
    QTest::keyClick(&bar(), Qt::Key_Right);
    EXPECT_EQ(controller->project().activeTabId, controller->project().tabs.at(1).id);
}

TEST_F(ScriptTabBarTest, RenamesByDoubleClickAndKey) {
    const auto field = [&] { return bar().findChild<QLineEdit *>(); };
    QTest::mouseDClick(&bar(), Qt::LeftButton, {}, bar().tabRect(1).center());
    ASSERT_TRUE(field()->isVisible());
    QTest::keyClicks(field(), QStringLiteral("Act & one"));
    QTest::keyClick(field(), Qt::Key_Return);
    EXPECT_EQ(names().at(1), QStringLiteral("Act & one"));
    EXPECT_EQ(bar().tabText(1), QStringLiteral("Act && one"));
    EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Rename Tab"));
    QTest::keyClick(&bar(), Qt::Key_F2);
    QTest::keyClicks(field(), QStringLiteral("dropped"));
    QTest::keyClick(field(), Qt::Key_Escape);
    EXPECT_FALSE(field()->isVisible());
    EXPECT_FALSE(names().contains(QStringLiteral("dropped")));
}

TEST_F(ScriptTabBarTest, ClosesTabsByButtonAndKeyButNeverTheLast) {
    auto *close = qobject_cast<QToolButton *>(bar().tabButton(0, QTabBar::RightSide));
    ASSERT_NE(close, nullptr);
    EXPECT_EQ(close->accessibleName(), QStringLiteral("Close Script 1"));
    QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_EQ(names(), QStringList({QStringLiteral("Script 2"), QStringLiteral("Script 3")}));
    QTest::keyClick(&bar(), Qt::Key_Delete);
    ASSERT_EQ(names().size(), 1);
    EXPECT_EQ(bar().tabButton(0, QTabBar::RightSide), nullptr);
    QTest::keyClick(&bar(), Qt::Key_Delete);
    EXPECT_EQ(names().size(), 1);
}

class ManyTabsTest : public ScriptEditorFixture {
protected:
    void SetUp() override {
        model::Project project = projectWith({QStringLiteral("One.")});
        while (project.tabs.size() < 2000) {
            model::ProjectTab tab = project.tabs.first();
            tab.id = model::TabId::create();
            tab.name = QStringLiteral("Tab %1").arg(project.tabs.size() + 1);
            tab.lineIds = {};
            project.tabs.append(tab);
        }
        open(std::move(project));
    }
    QTabBar &bar() { return editor->tabBar().bar(); }
    [[nodiscard]] QString activeName() const {
        for (const model::ProjectTab &tab : controller->project().tabs)
            if (tab.id == controller->project().activeTabId)
                return tab.name;
        return {};
    }
};

TEST_F(ManyTabsTest, TheBarHoldsThoseAroundTheActiveTabAndTheListShowsAll) {
    EXPECT_LT(bar().count(), 100);
    editor->tabBar().listTabs();
    auto *list = editor->tabBar().findChild<QListView *>();
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->model()->rowCount(), 2000);
    const QModelIndex wanted = list->model()->index(999, 0);
    list->scrollTo(wanted);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(wanted).center());
    EXPECT_EQ(activeName(), QStringLiteral("Tab 1000"));
    EXPECT_EQ(bar().tabText(bar().currentIndex()), QStringLiteral("Tab 1000"));
}

TEST_F(ManyTabsTest, TheArrowKeysGoOnBeyondTheBar) {
    bar().setFocus();
    for (int press = 0; press < 120; ++press)
        QTest::keyClick(&bar(), Qt::Key_Right);
    EXPECT_EQ(activeName(), QStringLiteral("Tab 121"));
    for (int press = 0; press < 60; ++press)
        QTest::keyClick(&bar(), Qt::Key_Left);
    EXPECT_EQ(activeName(), QStringLiteral("Tab 61"));
    QTest::keyClick(&bar(), Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(controller->project().tabs.at(61).name, QStringLiteral("Tab 61"));
    QTest::keyClick(&bar(), Qt::Key_Delete);
    EXPECT_EQ(controller->project().tabs.size(), 1999);
    EXPECT_NE(controller->project().tabs.at(60).name, QStringLiteral("Tab 61"));
}

TEST_F(ScriptTabBarTest, ALongNameIsShownCutAndKeptWhole) {
    const QString name(200'000, u'n');
    controller->tabs().renameTab(model::TabId(controller->project().tabs.at(1).id), name);
    EXPECT_LE(bar().tabText(1).size(), 200);
    editor->tabBar().rename(1);
    QTest::keyClick(bar().findChild<QLineEdit *>(), Qt::Key_Return);
    EXPECT_EQ(names().at(1), name);
}

TEST_F(ScriptTabBarTest, MovingATabByKeyOrDragIsOneStep) {
    QTest::keyClick(&bar(), Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(names().at(1), QStringLiteral("Script 3"));
    EXPECT_EQ(shownNames(), names());
    controller->undoManager().undo();
    EXPECT_EQ(shownNames().at(2), QStringLiteral("Script 3"));

    const QPoint from = bar().tabRect(0).center();
    const QPoint to(bar().tabRect(2).right() - 2, from.y());
    QTest::mousePress(&bar(), Qt::LeftButton, {}, from);
    for (int step = 1; step <= 10; ++step)
        QTest::mouseMove(&bar(), from + (to - from) * step / 10);
    QTest::mouseRelease(&bar(), Qt::LeftButton, {}, to);
    const QStringList moved{QStringLiteral("Script 2"), QStringLiteral("Script 3"), QStringLiteral("Script 1")};
    EXPECT_TRUE(QTest::qWaitFor([&] { return names() == moved; }, 5000));
    EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Move Tab"));
    controller->undoManager().undo();
    EXPECT_EQ(shownNames().first(), QStringLiteral("Script 1"));
}

} // namespace
} // namespace orlenta::shell
