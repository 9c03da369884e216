#include <gtest/gtest.h>
#include <QtGui/QClipboard>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QSpinBox>

#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptTabBar.h"
#include "shell/inspector/Inspector.h"
#include "shell/inspector/VoiceSection.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"

namespace orlenta {
namespace {

using controller::CommandId;

/// The keys that edit text or move in it, on this desktop. Return isn't one of them: it has its own meaning in every
/// kind of field.
QList<QKeySequence> textKeys() {
    using Key = QKeySequence;
    QList<QKeySequence> keys;
    for (const char *key :
         {"Ctrl+Backspace", "Ctrl+Del", "Ctrl+Shift+Backspace", "Shift+Del", "Ctrl+Shift+Del", "Ctrl+Left",
          "Ctrl+Right", "Ctrl+Shift+Left", "Ctrl+Shift+Right", "Space", "R", "Shift+D", "S", "Backspace", "Del"})
        keys.append(QKeySequence(QLatin1String(key), QKeySequence::PortableText));
    for (const Key::StandardKey standard : {Key::Undo,
                                            Key::Redo,
                                            Key::Cut,
                                            Key::Copy,
                                            Key::Paste,
                                            Key::SelectAll,
                                            Key::Deselect,
                                            Key::DeleteStartOfWord,
                                            Key::DeleteEndOfWord,
                                            Key::DeleteEndOfLine,
                                            Key::DeleteCompleteLine,
                                            Key::MoveToNextChar,
                                            Key::MoveToPreviousChar,
                                            Key::MoveToNextWord,
                                            Key::MoveToPreviousWord,
                                            Key::MoveToNextLine,
                                            Key::MoveToPreviousLine,
                                            Key::MoveToStartOfLine,
                                            Key::MoveToEndOfLine,
                                            Key::MoveToStartOfBlock,
                                            Key::MoveToEndOfBlock,
                                            Key::MoveToStartOfDocument,
                                            Key::MoveToEndOfDocument,
                                            Key::SelectNextChar,
                                            Key::SelectPreviousChar,
                                            Key::SelectNextWord,
                                            Key::SelectPreviousWord,
                                            Key::SelectNextLine,
                                            Key::SelectPreviousLine,
                                            Key::SelectStartOfLine,
                                            Key::SelectEndOfLine,
                                            Key::SelectStartOfBlock,
                                            Key::SelectEndOfBlock,
                                            Key::SelectStartOfDocument,
                                            Key::SelectEndOfDocument})
        keys.append(QKeySequence::keyBindings(standard));
    return keys;
}

/// The window of a project with two lines. Counts what its menus carry out.
class TextKeysTest : public ::testing::Test {
protected:
    void SetUp() override {
        const model::StoredProject stored = session.makeProject(
            QStringLiteral("Keys"), {QStringLiteral("Clara: Good morning."), QStringLiteral("Clara: Good night.")});
        ASSERT_TRUE(windows.openProject(stored.folder));
        window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
        window().editor().list().setFocus();
        for (const QAction *title : window().menuBar()->actions())
            for (const QAction *action : title->menu()->actions())
                QObject::connect(action, &QAction::triggered, &window(),
                                 [this, action] { carriedOut.append(action->text()); });
    }
    void TearDown() override { project().discardChanges(); }

    [[nodiscard]] shell::ProjectWindow &window() { return windows.open().front()->window(); }
    [[nodiscard]] controller::ProjectController &project() { return windows.open().front()->controller(); }
    void focus(QWidget &field) {
        field.show();
        field.setFocus();
        ASSERT_TRUE(field.hasFocus());
    }
    /// Presses every text key in the field that has the focus.
    void expectKeepsItsKeys(const std::string &field) {
        QWidget *focused = QApplication::focusWidget();
        const auto lines = project().scriptLineIds();
        for (const QKeySequence &key : textKeys()) {
            QGuiApplication::clipboard()->setText(QStringLiteral("words"));
            testing::press(key);
            EXPECT_TRUE(carriedOut.isEmpty())
                << field << ", " << key.toString().toStdString() << ": " << carriedOut.join(u',').toStdString();
            carriedOut.clear();
            // A key may lead out of the field, as Down does in the voice search.
            focused->setFocus();
            ASSERT_TRUE(focused->hasFocus()) << field << ", " << key.toString().toStdString();
        }
        EXPECT_EQ(project().scriptLineIds(), lines) << field;
    }

    testing::ShellSession session;
    shell::ProjectWindows windows{session.context};
    QStringList carriedOut;
};

TEST_F(TextKeysTest, EveryKindOfFieldKeepsTheKeysOfText) {
    testing::pressKeyOf(CommandId::EditLine);
    ASSERT_TRUE(QTest::qWaitFor(
        [] { return qobject_cast<shell::ScriptTextField *>(QApplication::focusWidget()) != nullptr; }, 5000));
    expectKeepsItsKeys("line text");

    testing::pressKeyOf(CommandId::EditNotes);
    ASSERT_NE(qobject_cast<shell::NotesField *>(QApplication::focusWidget()), nullptr);
    carriedOut.clear();
    expectKeepsItsKeys("notes");

    QLineEdit &search = *window().inspector().voices().searchField();
    ASSERT_TRUE(session.startLocalVoices());
    ASSERT_TRUE(testing::waitUntil([&search] { return search.isVisible(); }));
    focus(search);
    expectKeepsItsKeys("voice search");

    window().editor().tabBar().rename(0);
    ASSERT_NE(qobject_cast<QLineEdit *>(QApplication::focusWidget()), nullptr);
    expectKeepsItsKeys("tab name");

    QSpinBox number(window().centralWidget());
    focus(number);
    expectKeepsItsKeys("spin box");

    QInputDialog dialog(&window());
    dialog.open();
    dialog.activateWindow();
    ASSERT_TRUE(testing::waitUntil([&dialog] { return dialog.isActiveWindow(); }));
    focus(*dialog.findChild<QLineEdit *>());
    expectKeepsItsKeys("name in a dialog");
}

TEST_F(TextKeysTest, OtherCommandsWorkWhileTextIsEdited) {
    testing::pressKeyOf(CommandId::EditLine);
    ASSERT_TRUE(QTest::qWaitFor(
        [] { return qobject_cast<shell::ScriptTextField *>(QApplication::focusWidget()) != nullptr; }, 5000));
    carriedOut.clear();
    testing::pressKeyOf(CommandId::InsertLine);
    EXPECT_EQ(project().scriptLineIds().size(), 3);
    EXPECT_EQ(project().lines().find(project().scriptLineIds().at(1))->text, QString());
}

TEST_F(TextKeysTest, PastingIntoATextPastesLinesIfNothingElseIsOnTheClipboard) {
    testing::pressKeyOf(CommandId::Copy);
    focus(*window().inspector().voices().searchField());
    testing::pressKeyOf(CommandId::Paste);
    EXPECT_EQ(project().scriptLineIds().size(), 3);
    EXPECT_EQ(window().inspector().voices().searchField()->text(), QString());
}

} // namespace
} // namespace orlenta
