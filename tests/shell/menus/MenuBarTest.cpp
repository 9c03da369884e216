#include "shell/menus/MenuBar.h"

#include <string>

#include <gtest/gtest.h>
#include <QtCore/QSet>
#include <QtGui/QClipboard>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTreeWidget>

#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "shell/controls/NoticeLabel.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/menus/ProjectActions.h"
#include "shell/menus/ShortcutsDialog.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"

namespace orlenta {
namespace {

using controller::CommandId;

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
    directionAction(QStringLiteral("Record Direction"), QStringLiteral("Ctrl+R"), true);
    directionAction(QStringLiteral("Play Direction"), QStringLiteral("Ctrl+Alt+P"), false);
    directionAction(QStringLiteral("Import Direction Audio..."), QStringLiteral("Ctrl+I"), true);
    directionAction(QStringLiteral("Delete Direction Audio"), QStringLiteral("Ctrl+Shift+Del"), false);
    directionAction(QStringLiteral("Direct by Voice"), QStringLiteral("Ctrl+M"), true);
    directionAction(QStringLiteral("Edit Notes"), QStringLiteral("Ctrl+Shift+N"), true);
    project().selection().selectAlone(project().scriptLineIds().at(1));
    action(QStringLiteral("Direction"), QStringLiteral("Direct by Voice"))->trigger();
    EXPECT_EQ(mode(0), model::DirectionMode::Text);
    EXPECT_EQ(mode(1), model::DirectionMode::Voice);
    directionAction(QStringLiteral("Direct by Text"), QStringLiteral("Ctrl+M"), true);
}

TEST_F(MenuBarTest, TypingOnASelectedLineRunsNoCommand) {
    QSignalSpy refused(&project().notices(), &controller::Notices::refused);
    for (const char letter : std::string("rdimnRDIMN"))
        QTest::keyClick(&window().editor().list(), letter);
    EXPECT_FALSE(project().hasUnsavedChanges());
    EXPECT_EQ(window().findChild<QDialog *>(), nullptr);
    EXPECT_TRUE(window().editor().list().hasFocus());
    EXPECT_EQ(refused.size(), 0);
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    EXPECT_EQ(mode(0), model::DirectionMode::Voice);
}

TEST_F(MenuBarTest, UndoAndRedoFollowTheTypingInAText) {
    const QAction *undo = window().actions()[controller::CommandId::Undo];
    const QAction *redo = window().actions()[controller::CommandId::Redo];
    QTest::keyClick(&window().editor().list(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return qobject_cast<shell::ScriptTextField *>(QApplication::focusWidget()) != nullptr; }, 5000));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("abc"));
    EXPECT_TRUE(undo->isEnabled());
    EXPECT_FALSE(redo->isEnabled());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(redo->isEnabled());
    window().actions()[controller::CommandId::Redo]->trigger();
    EXPECT_EQ(project().lines().find(project().scriptLineIds().at(0))->text, QStringLiteral("Good morning.abc"));
    EXPECT_FALSE(redo->isEnabled());
}

TEST_F(MenuBarTest, ACommandWithoutEffectSaysWhyInTheStatusLine) {
    const auto says = [this](const char *text) {
        for (const auto *label : window().findChildren<shell::NoticeLabel *>())
            if (label->isVisible() && label->text() == QLatin1String(text))
                return true;
        return false;
    };
    QGuiApplication::clipboard()->clear();
    testing::pressKeyOf(CommandId::Paste);
    EXPECT_TRUE(says("There is nothing to paste here."));
    testing::pressKeyOf(CommandId::SplitLine);
    EXPECT_TRUE(says("Select one line of several sentences to split."));
    // These are disabled, so their keys reach the window.
    testing::pressKeyOf(CommandId::Undo);
    EXPECT_TRUE(says("There is nothing to undo."));
    testing::pressKeyOf(CommandId::DeleteDirection);
    EXPECT_TRUE(says("Select a line that shows direction audio to delete it."));
    project().selection().selectAll();
    testing::pressKeyOf(CommandId::ChooseVoice);
    EXPECT_TRUE(says("Select exactly one line to choose its voice."));
    EXPECT_TRUE(action(QStringLiteral("Script"), QStringLiteral("Choose Voice..."))
                    ->toolTip()
                    .endsWith(QLatin1String("Select exactly one line to choose its voice.")));
}

TEST_F(MenuBarTest, AnOpenMenuGivesEachItemItsOwnMnemonicAndAClosedOneNone) {
    const auto expectOwnMnemonics = [](const QList<QAction *> &items, const QString &menu) {
        QSet<QKeySequence> taken;
        for (const QAction *item : items) {
            if (item->isSeparator())
                continue;
            const QKeySequence mnemonic = QKeySequence::mnemonic(item->text());
            EXPECT_FALSE(mnemonic.isEmpty() || taken.contains(mnemonic))
                << menu.toStdString() << ": " << item->text().toStdString();
            taken.insert(mnemonic);
        }
    };
    expectOwnMnemonics(window().menuBar()->actions(), QStringLiteral("menu bar"));
    for (const QAction *title : window().menuBar()->actions()) {
        QMenu &menu = *title->menu();
        Q_EMIT menu.aboutToShow();
        expectOwnMnemonics(menu.actions(), title->text());
        Q_EMIT menu.aboutToHide();
        for (const QAction *item : menu.actions())
            EXPECT_FALSE(item->text().contains(QLatin1Char('&'))) << item->text().toStdString();
    }
    shell::ScriptCommands &commands = window().editor().commands();
    commands.openLineMenu(project().scriptLineIds().first(), QPoint(), &window());
    auto *menu = window().findChild<QMenu *>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_NE(menu, nullptr);
    expectOwnMnemonics(menu->actions(), QStringLiteral("menu of a line"));
    menu->close();
}

TEST_F(MenuBarTest, TheShortcutListCoversTheMenusAndThePlaces) {
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
    EXPECT_EQ(keysOf(QStringLiteral("View"), QStringLiteral("Next Area")), QStringLiteral("F6"));
    EXPECT_EQ(keysOf(QStringLiteral("Voice Search"), QStringLiteral("Go to the voices")), QStringLiteral("Down"));
    EXPECT_EQ(keysOf(QStringLiteral("Controls of a Line"), QStringLiteral("Go back to the lines")),
              QStringLiteral("Esc"));
    EXPECT_EQ(keysOf(QStringLiteral("Direction"), QStringLiteral("Record Direction")), QStringLiteral("Ctrl+R"));
    EXPECT_EQ(keysOf(QStringLiteral("View"), QStringLiteral("Zoom In")), QStringLiteral("Ctrl+=, Ctrl++"));
    const QStringList unnamed = testing::unnamedControls(*dialog);
    EXPECT_TRUE(unnamed.isEmpty()) << unnamed.join(QStringLiteral("; ")).toStdString();
    action(QStringLiteral("Help"), QStringLiteral("Keyboard Shortcuts"))->trigger();
    EXPECT_EQ(window().findChildren<shell::ShortcutsDialog *>().size(), 1);
}

} // namespace
} // namespace orlenta
