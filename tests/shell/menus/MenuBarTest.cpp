#include "shell/menus/MenuBar.h"

#include <gtest/gtest.h>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTreeWidget>

#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/menus/ShortcutsDialog.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"

namespace orlenta {
namespace {

/// The window of a project with two lines. The list has the focus.
class MenuBarTest : public ::testing::Test {
protected:
    void SetUp() override {
        const model::StoredProject stored = session.makeProject(
            QStringLiteral("Menus"), {QStringLiteral("Clara: Good morning."), QStringLiteral("Clara: Good night.")});
        ASSERT_TRUE(windows.openProject(stored.folder));
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        window().editor().list().setFocus();
    }
    [[nodiscard]] shell::ProjectWindow &window() { return windows.open().front()->window(); }
    [[nodiscard]] controller::ProjectController &project() { return windows.open().front()->controller(); }
    [[nodiscard]] model::DirectionMode mode(qsizetype index) {
        const model::ProjectLine &line = *project().lines().find(project().scriptLineIds().at(index));
        return project().project().effectiveSettings(line).directionMode;
    }
    [[nodiscard]] QAction *action(const QString &menu, const QString &title) {
        for (const QAction *entry : window().menuBar()->actions())
            if (QString(entry->text()).remove(QLatin1Char('&')) == menu)
                for (QAction *candidate : entry->menu()->actions())
                    if (candidate->text() == title)
                        return candidate;
        return nullptr;
    }
    void directionAction(const QString &title, const QString &key, bool isEnabled) {
        const QAction *found = action(QStringLiteral("Direction"), title);
        ASSERT_NE(found, nullptr) << title.toStdString();
        EXPECT_EQ(found->shortcut().toString(), key) << title.toStdString();
        EXPECT_EQ(found->isEnabled(), isEnabled) << title.toStdString();
    }

    testing::ShellSession session;
    shell::ProjectWindows windows{session.context};
};

/// The colours in one row of pixels.
QSet<QRgb> colorsIn(const QImage &image, int row) {
    QSet<QRgb> colors;
    for (int x = 0; x < image.width(); ++x)
        colors.insert(image.pixel(x, row));
    return colors;
}

TEST_F(MenuBarTest, OneLineRunsBelowAllTitlesAtEveryScale) {
    for (const double scale : {1.0, 1.5, 2.0}) {
        shell::Theme::setUiScale(scale);
        QCoreApplication::processEvents();
        const QImage bar = window().menuBar()->grab().toImage();
        const QSet<QRgb> line = colorsIn(bar, bar.height() - 1);
        EXPECT_EQ(line.size(), 1) << scale;
        EXPECT_EQ(colorsIn(bar, bar.height() - 2).size(), 1) << scale;
        EXPECT_NE(colorsIn(bar, bar.height() - 2), line) << scale;
    }
    shell::Theme::setUiScale(1.0);
}

TEST_F(MenuBarTest, TheDirectionMenuActsOnTheSelectedLineAndShowsItsKeys) {
    directionAction(QStringLiteral("Record Direction"), QStringLiteral("R"), true);
    directionAction(QStringLiteral("Play Direction"), QStringLiteral("D"), false);
    directionAction(QStringLiteral("Import Direction Audio..."), QStringLiteral("I"), true);
    directionAction(QStringLiteral("Delete Direction Audio"), QStringLiteral("Shift+D"), false);
    directionAction(QStringLiteral("Direct by Voice"), QStringLiteral("M"), true);
    directionAction(QStringLiteral("Edit Notes"), QStringLiteral("N"), true);
    project().selection().selectAlone(project().scriptLineIds().at(1));
    action(QStringLiteral("Direction"), QStringLiteral("Direct by Voice"))->trigger();
    EXPECT_EQ(mode(0), model::DirectionMode::Text);
    EXPECT_EQ(mode(1), model::DirectionMode::Voice);
    directionAction(QStringLiteral("Direct by Text"), QStringLiteral("M"), true);
}

TEST_F(MenuBarTest, DirectionKeysOnlyWorkInTheListAndNotInTexts) {
    QTest::keyClick(&window().editor().list(), Qt::Key_M);
    EXPECT_EQ(mode(0), model::DirectionMode::Voice);
    for (QComboBox *picker : window().findChildren<QComboBox *>())
        if (picker->accessibleName() == QStringLiteral("Output mode"))
            picker->setFocus();
    ASSERT_NE(qobject_cast<QComboBox *>(QApplication::focusWidget()), nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_M);
    EXPECT_EQ(mode(0), model::DirectionMode::Voice);
    window().editor().list().setFocus();
    QTest::keyClick(&window().editor().list(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return qobject_cast<shell::ScriptTextField *>(QApplication::focusWidget()) != nullptr; }, 5000));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" rDimn"));
    EXPECT_EQ(project().lines().find(project().scriptLineIds().at(0))->text, QStringLiteral("Good morning. rDimn"));
    EXPECT_EQ(mode(0), model::DirectionMode::Voice);
}

TEST_F(MenuBarTest, TheShortcutListCoversTheMenusAndLeavingTheLines) {
    QTest::keyClick(&window().editor().list(), Qt::Key_F1);
    auto *dialog = window().findChild<shell::ShortcutsDialog *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isVisible());
    const auto *tree = dialog->findChild<QTreeWidget *>();
    const auto keysOf = [tree](const QString &group, const QString &command) {
        for (int top = 0; top < tree->topLevelItemCount(); ++top) {
            const QTreeWidgetItem *item = tree->topLevelItem(top);
            for (int row = 0; item->text(0) == group && row < item->childCount(); ++row)
                if (item->child(row)->text(0) == command)
                    return item->child(row)->text(1);
        }
        return QString();
    };
    EXPECT_EQ(keysOf(QStringLiteral("Script Lines"), QStringLiteral("Leave the lines, forwards or backwards")),
              QStringLiteral("F6, Shift+F6"));
    EXPECT_EQ(keysOf(QStringLiteral("Controls of a Line"), QStringLiteral("Go back to the lines")),
              QStringLiteral("Esc"));
    EXPECT_EQ(keysOf(QStringLiteral("Direction"), QStringLiteral("Record Direction")), QStringLiteral("R"));
    EXPECT_EQ(keysOf(QStringLiteral("View"), QStringLiteral("Zoom In")), QStringLiteral("Ctrl+=, Ctrl++"));
    const QStringList unnamed = testing::unnamedControls(*dialog);
    EXPECT_TRUE(unnamed.isEmpty()) << unnamed.join(QStringLiteral("; ")).toStdString();
    action(QStringLiteral("Help"), QStringLiteral("Keyboard Shortcuts"))->trigger();
    EXPECT_EQ(window().findChildren<shell::ShortcutsDialog *>().size(), 1);
}

} // namespace
} // namespace orlenta
