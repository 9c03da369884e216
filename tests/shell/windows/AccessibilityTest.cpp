#include <functional>

#include <gtest/gtest.h>
#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

#include "controller/ProjectController.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptTabBar.h"
#include "shell/inspector/Inspector.h"
#include "shell/inspector/PresetSection.h"
#include "shell/inspector/SettingsSection.h"
#include "shell/inspector/VoiceSection.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectToolbar.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"

namespace orlenta {
namespace {

QString nameOf(QAccessibleInterface *item) {
    return item->text(QAccessible::Name);
}

void forEach(QAccessibleInterface *item, const std::function<void(QAccessibleInterface *)> &visit) {
    if (item == nullptr)
        return;
    visit(item);
    for (int child = 0; child < item->childCount(); ++child)
        forEach(item->child(child), visit);
}

/// What assistive technology is told about a project's window.
class AccessibilityTest : public ::testing::Test {
protected:
    void SetUp() override {
        const model::StoredProject stored = session.makeProject(
            QStringLiteral("Told"), {QStringLiteral("Clara: Good morning."), QStringLiteral("Clara: Good night.")});
        ASSERT_TRUE(session.startLocalVoices());
        ASSERT_TRUE(windows.openProject(stored.folder));
        ASSERT_TRUE(testing::waitUntil([this] { return search().isVisible(); }));
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        window().editor().list().setFocus();
    }
    void TearDown() override { project().discardChanges(); }

    [[nodiscard]] shell::ProjectWindow &window() { return windows.open().front()->window(); }
    [[nodiscard]] controller::ProjectController &project() { return windows.open().front()->controller(); }
    [[nodiscard]] QLineEdit &search() { return *window().inspector().voices().searchField(); }
    [[nodiscard]] QStringList focusedItems() {
        QStringList focused;
        forEach(QAccessible::queryAccessibleInterface(&window()), [&focused](QAccessibleInterface *item) {
            if (item->state().focused)
                focused.append(nameOf(item));
        });
        return focused;
    }

    testing::ShellSession session;
    shell::ProjectWindows windows{session.context};
};

TEST_F(AccessibilityTest, ACombosNameIsItsLabelAndItsTextIsItsValue) {
    QComboBox &mode = *window().toolbar().outputModePicker();
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&mode);
    EXPECT_EQ(told->role(), QAccessible::ComboBox);
    EXPECT_EQ(nameOf(told), QStringLiteral("Output mode"));
    EXPECT_EQ(told->text(QAccessible::Value), QStringLiteral("Continuous"));
    mode.setCurrentIndex(1);
    EXPECT_EQ(told->text(QAccessible::Value), QStringLiteral("Individual"));
    ASSERT_NE(told->textInterface(), nullptr);
    EXPECT_EQ(told->textInterface()->text(0, told->textInterface()->characterCount()), QStringLiteral("Individual"));
    EXPECT_EQ(nameOf(QAccessible::queryAccessibleInterface(window().inspector().presets().picker())),
              QStringLiteral("Preset"));
    EXPECT_EQ(told->childCount(), 0);
    told->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    ASSERT_EQ(told->childCount(), 1);
    EXPECT_EQ(told->indexOfChild(told->child(0)), 0);
    mode.hidePopup();
}

TEST_F(AccessibilityTest, TheModesOfAModelAreRadioButtons) {
    for (QPushButton *mode : window().inspector().settings().modeButtons())
        EXPECT_EQ(QAccessible::queryAccessibleInterface(mode)->role(), QAccessible::RadioButton)
            << mode->text().toStdString();
}

TEST_F(AccessibilityTest, OnlyWhatHasTheFocusSaysSo) {
    project().tabs().addTab();
    const model::TabId first = project().project().tabs.first().id;
    project().tabs().setActiveTab(first);
    project().selection().selectAlone(project().scriptLineIds().first());
    window().editor().list().setFocus();
    const QString line = QStringLiteral("Line 1, Clara, Good morning.");
    EXPECT_EQ(focusedItems(), QStringList{line});
    window().toolbar().accountButton()->setFocus();
    EXPECT_EQ(focusedItems(), QStringList{nameOf(QAccessible::queryAccessibleInterface(QApplication::focusWidget()))});
    window().inspector().voices().voiceList()->setFocus();
    const QStringList inList = focusedItems();
    EXPECT_TRUE(inList.contains(QStringLiteral("Clara"))) << inList.join(u',').toStdString();
    search().setFocus();
    EXPECT_EQ(focusedItems(), QStringList{QStringLiteral("Search voices")});
}

TEST_F(AccessibilityTest, TheTabsAreThoseOfTheBarAndTheCurrentOneIsSelected) {
    project().tabs().addTab();
    QTabBar &bar = window().editor().tabBar().bar();
    QAccessibleInterface *told = QAccessible::queryAccessibleInterface(&bar);
    ASSERT_GE(told->childCount(), 2);
    for (int index = 0; index < 2; ++index) {
        EXPECT_EQ(told->child(index)->role(), QAccessible::PageTab);
        EXPECT_EQ(nameOf(told->child(index)), project().project().tabs.at(index).name);
        EXPECT_EQ(told->indexOfChild(told->child(index)), index);
        EXPECT_EQ(bool(told->child(index)->state().selected), index == bar.currentIndex());
    }
    QAccessibleInterface *first = told->child(0);
    first->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(bar.currentIndex(), 0);
    bar.setFocus();
    EXPECT_TRUE(first->state().focused);
    const model::TabId last = project().project().tabs.last().id;
    project().tabs().closeTab(last);
    forEach(told, [](QAccessibleInterface *item) { EXPECT_TRUE(item->isValid()); });
}

TEST_F(AccessibilityTest, TheButtonThatClearsTheSearchHasAName) {
    search().setText(QStringLiteral("nobody"));
    const auto buttons = search().findChildren<QToolButton *>();
    QStringList names;
    for (QToolButton *button : buttons)
        names.append(nameOf(QAccessible::queryAccessibleInterface(button)));
    EXPECT_TRUE(names.contains(QStringLiteral("Clear the search"))) << names.join(u',').toStdString();
    EXPECT_FALSE(names.contains(QString()));
}

} // namespace
} // namespace orlenta
