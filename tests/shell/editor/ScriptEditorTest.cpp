#include <QtGui/QClipboard>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "controller/document/Notices.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/TakeEditing.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/editor/ScriptEditorFixture.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

const QStringList threeTexts{QStringLiteral("One."), QStringLiteral("Two. And a half."), QStringLiteral("Three.")};

class ScriptEditorTest : public ScriptEditorFixture {
protected:
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    template <typename Widget>
    Widget *control(qsizetype index, const QString &name) {
        for (Widget *widget : rowAt(index)->template findChildren<Widget *>())
            if ((widget->accessibleName() + QLatin1Char(',')).startsWith(name + QLatin1Char(',')))
                return widget;
        return nullptr;
    }
};

TEST_F(ScriptEditorTest, TheListKeysMoveAndExtendTheSelection) {
    open(projectWith(threeTexts));
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({0}));
    key(Qt::Key_Down);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1}));
    key(Qt::Key_Tab);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({2}));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1}));
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({0, 1}));
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1, 2}));
    EXPECT_TRUE(editor->list().hasFocus());
}

TEST_F(ScriptEditorTest, AClickSelectsOneLineAndAShiftClickToggles) {
    open(projectWith(threeTexts));
    const auto click = [&](qsizetype index, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(rowAt(index), Qt::LeftButton, modifiers, QPoint(40, 8));
    };
    click(2, Qt::NoModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({2}));
    click(0, Qt::ShiftModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({0, 2}));
    click(2, Qt::ShiftModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({0}));
    click(1, Qt::ControlModifier);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1}));
}

TEST_F(ScriptEditorTest, TypingReachesTheProjectAndIsOneUndoStep) {
    open(projectWith(threeTexts));
    key(Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" Then four words more."));
    EXPECT_EQ(textAt(0), QStringLiteral("One. Then four words more."));
    key(Qt::Key_Escape);
    EXPECT_TRUE(editor->list().hasFocus());
    EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Typing"));
    controller->undoManager().undo();
    EXPECT_EQ(rowAt(0)->textField().sourceText(), QStringLiteral("One."));
    controller->undoManager().redo();
    EXPECT_EQ(rowAt(0)->textField().sourceText(), QStringLiteral("One. Then four words more."));
}

TEST_F(ScriptEditorTest, TypingChangesNothingButWhatIsTyped) {
    const QString written = u"Bonjour\u00A0!\r\nCa va\u202F?\u2028Oui.\rBien."_s;
    open(projectWith({written, u"Next."_s}));
    key(Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    auto *text = qobject_cast<ScriptTextField *>(QApplication::focusWidget());
    ASSERT_NE(text, nullptr);
    key(Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClicks(text, u"Eh, "_s);
    EXPECT_EQ(textAt(0), u"Eh, "_s + written);
    key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(textAt(0), u"Eh, \n"_s + written);
    // The selection counts the stored text, in which this line break is two characters.
    text->setSourceSelection({written.size() - 2, 4});
    EXPECT_EQ(text->textCursor().selectedText(), u".\u2029Bi"_s);
    EXPECT_EQ(text->sourceSelection(), (controller::TextRange{written.size() - 2, 4}));
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(textAt(0), QString());
    EXPECT_EQ(QApplication::clipboard()->text(), u"Eh, \n"_s + written);
    key(Qt::Key_Escape);
    controller->undoManager().undo();
    EXPECT_EQ(textAt(0), written);
}

TEST_F(ScriptEditorTest, UndoInATextUndoesItsOwnTypingFirst) {
    open(projectWith(threeTexts));
    key(Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("abc"));
    controller->typing().commit();
    EXPECT_FALSE(rowAt(0)->textField().document()->isUndoAvailable());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("xyz"));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(textAt(0), QStringLiteral("One.abc"));
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(textAt(0), QStringLiteral("One."));
    EXPECT_EQ(rowAt(0)->textField().sourceText(), QStringLiteral("One."));
}

TEST_F(ScriptEditorTest, TabContinuesEditingInTheNextLine) {
    open(projectWith(threeTexts));
    key(Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    key(Qt::Key_Tab);
    ASSERT_TRUE(hasCaret(1));
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1}));
    EXPECT_FALSE(rowAt(0)->textField().allowsEditing());
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    ASSERT_TRUE(hasCaret(0));
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(editor->list().hasFocus());
}

TEST_F(ScriptEditorTest, ADoubleClickPutsTheCaretAtTheClickedPoint) {
    open(projectWith(threeTexts));
    QWidget *surface = rowAt(1)->textField().viewport();
    QTest::mouseDClick(surface, Qt::LeftButton, {}, QPoint(5, surface->height() / 2));
    ASSERT_TRUE(hasCaret(1));
    EXPECT_EQ(controller->selection().textSelectionRange(), (controller::TextRange{0, 0}));
    QTest::mouseClick(rowAt(0), Qt::LeftButton, {}, QPoint(40, 8));
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
    EXPECT_TRUE(editor->list().hasFocus());
}

TEST_F(ScriptEditorTest, AClickInTheTextOfTheOnlySelectedLineBeginsEditingThere) {
    open(projectWith(threeTexts));
    const auto click = [&](qsizetype index, int x, Qt::MouseButton button = Qt::LeftButton) {
        QWidget *surface = rowAt(index)->textField().viewport();
        QTest::mouseClick(surface, button, {}, QPoint(x, surface->height() / 2));
    };
    click(1, 5);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1}));
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
    click(1, 5, Qt::RightButton);
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
    click(1, 5);
    ASSERT_TRUE(hasCaret(1));
    EXPECT_EQ(controller->selection().textSelectionRange(), (controller::TextRange{0, 0}));
    // Of several selected lines, the clicked one is selected first.
    key(Qt::Key_Escape);
    key(Qt::Key_Down, Qt::ShiftModifier);
    click(1, 5);
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({1}));
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
}

TEST_F(ScriptEditorTest, ADoubleClickOnAnotherLinePutsTheCaretAndSelectsNoWord) {
    open(projectWith(threeTexts));
    const QWidget *surface = rowAt(1)->textField().viewport();
    const QPoint point = surface->mapTo(editor.get(), QPoint(5, surface->height() / 2));
    // Through the window, which turns the second click into a press and a double click.
    QTest::mouseDClick(editor->windowHandle(), Qt::LeftButton, {}, point);
    ASSERT_TRUE(hasCaret(1));
    EXPECT_EQ(controller->selection().textSelectionRange(), (controller::TextRange{0, 0}));
}

TEST_F(ScriptEditorTest, TheKeyboardEntersAndLeavesARowsControls) {
    open(projectWith(threeTexts));
    addTake(0);
    for (const char *name : {"Direction mode of line 1", "Edit notes of line 1", "Regenerate line 1", "Play line 1"}) {
        key(Qt::Key_Right);
        EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QLatin1String(name));
    }
    key(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Playhead of line 1"));
    QSignalSpy seek(qobject_cast<WaveformBarsView *>(QApplication::focusWidget()), &WaveformBarsView::seekRequested);
    key(Qt::Key_End);
    ASSERT_EQ(seek.size(), 1);
    EXPECT_DOUBLE_EQ(seek.first().first().toDouble(), 1.0);
    key(Qt::Key_Escape);
    EXPECT_TRUE(editor->list().hasFocus());
}

TEST_F(ScriptEditorTest, ReturnPressesTheFocusedControlInsteadOfOpeningTheText) {
    open(projectWith(threeTexts));
    addTake(0);
    rowAt(0)->focusControls();
    ASSERT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Direction mode of line 1"));
    key(Qt::Key_Return);
    EXPECT_TRUE(rowAt(0)->content().header.isVoiceDirected);
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
    auto *picker = control<QToolButton>(0, QStringLiteral("Take of line 1"));
    picker->setFocus();
    key(Qt::Key_Enter);
    auto *menu = rowAt(0)->findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    menu->close();
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
}

TEST_F(ScriptEditorTest, SpaceOnAWaveformPlaysItsAudio) {
    open(projectWith(threeTexts));
    addTake(0);
    controller->selection().selectAlone(idAt(1));
    QSignalSpy asked(rowAt(0), &LineRow::commandRequested);
    auto *take = control<WaveformBarsView>(0, QStringLiteral("Playhead of line 1"));
    QTest::keyClick(take, Qt::Key_Space);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked.takeFirst().first().value<CommandId>(), CommandId::PlaySelection);
    editor->commands().carryOut(CommandId::SwitchDirectionMode, idAt(0), editor.get());
    auto *read = control<WaveformBarsView>(0, QStringLiteral("Playhead of the direction of line 1"));
    ASSERT_NE(read, nullptr);
    QTest::keyClick(read, Qt::Key_Return);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked.first().first().value<CommandId>(), CommandId::PlayDirection);
}

TEST_F(ScriptEditorTest, ARowShowsItsGenerationState) {
    model::Project project = projectWith(threeTexts);
    project.lines.update(project.tabs.first().lineIds.at(2), [](model::ProjectLine &line) { line.voiceId.reset(); });
    open(project);
    const auto hint = [&](qsizetype index) {
        for (const QLabel *label : rowAt(index)->findChildren<QLabel *>())
            if (label->text() == QStringLiteral("Select a voice in the inspector to generate"))
                return label->isVisible();
        return false;
    };
    auto *generate = control<QPushButton>(0, QStringLiteral("Generate line 1"));
    EXPECT_EQ(generate->text(), QStringLiteral("Generate"));
    EXPECT_FALSE(hint(0));
    EXPECT_TRUE(hint(2));
    EXPECT_FALSE(control<QPushButton>(2, QStringLiteral("Generate line 3"))->isVisible());
    controller->takes().setGenerating(controller::GenerationState::Generating, idAt(0));
    EXPECT_EQ(generate->text(), QStringLiteral("Generating..."));
    EXPECT_FALSE(generate->isEnabled());
    controller->takes().setGenerating(controller::GenerationState::Idle, idAt(0));
    EXPECT_TRUE(generate->isEnabled());
    addTake(0);
    EXPECT_EQ(generate->text(), QStringLiteral("Regenerate"));
}

TEST_F(ScriptEditorTest, ALinesMenuShowsTheKeysOfItsCommands) {
    open(projectWith(threeTexts));
    editor->commands().openLineMenu(idAt(1), editor->mapToGlobal(QPoint(50, 50)), rowAt(1));
    auto *menu = rowAt(1)->findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    QHash<QString, QString> keys;
    for (const QAction *action : menu->actions())
        keys.insert(QString(action->text()).remove(QLatin1Char('&')), action->shortcut().toString());
    EXPECT_EQ(keys.value(QStringLiteral("Edit Text")), QStringLiteral("Return"));
    EXPECT_EQ(keys.value(QStringLiteral("Record Direction")), QStringLiteral("Ctrl+R"));
    EXPECT_EQ(keys.value(QStringLiteral("Delete Direction Audio")), QStringLiteral("Ctrl+Shift+Del"));
    EXPECT_EQ(keys.value(QStringLiteral("Delete Line")), QStringLiteral("Ctrl+Backspace"));
    menu->close();
}

TEST_F(ScriptEditorTest, TheTakePickerSwitchesTakes) {
    open(projectWith(threeTexts));
    addTake(1);
    addTake(1);
    auto *picker = control<QToolButton>(1, QStringLiteral("Take of line 2"));
    EXPECT_EQ(picker->text(), QStringLiteral("Take 2 of 2"));
    picker->click();
    auto *menu = rowAt(1)->findChild<QMenu *>();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->actions().size(), 4);
    EXPECT_EQ(menu->actions().last()->text().remove(QLatin1Char('&')), QStringLiteral("Delete Generated Audio"));
    EXPECT_TRUE(menu->actions().at(1)->isChecked());
    menu->actions().at(0)->trigger();
    menu->close();
    EXPECT_EQ(picker->text(), QStringLiteral("Take 1 of 2"));
    EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Switch Take"));
    controller->undoManager().undo();
    EXPECT_EQ(picker->text(), QStringLiteral("Take 2 of 2"));
}

TEST_F(ScriptEditorTest, FetchesTheWaveformOfAVisibleLine) {
    open(projectWith(threeTexts));
    addTake(0);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rowAt(0)->content().takes.audio->waveform.size() == 200; }, 10000));
}

TEST_F(ScriptEditorTest, ShowsTheDurationOfAVisibleLineOnceRead) {
    open(projectWith(threeTexts));
    addTake(1);
    auto *duration = control<QLabel>(1, QStringLiteral("Duration of line 2"));
    EXPECT_EQ(duration->text(), QStringLiteral("--:--"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return duration->text() == QStringLiteral("0:03"); }, 20000));
}

TEST_F(ScriptEditorTest, AClickInTheWaveformSeeks) {
    open(projectWith(threeTexts));
    addTake(0);
    auto *waveform = control<WaveformBarsView>(0, QStringLiteral("Playhead of line 1"));
    QSignalSpy seek(waveform, &WaveformBarsView::seekRequested);
    QTest::mouseClick(waveform, Qt::LeftButton, {}, QPoint(waveform->width() / 4, 5));
    ASSERT_EQ(seek.size(), 1);
    EXPECT_NEAR(seek.first().first().toDouble(), 0.25, 0.01);
}

TEST_F(ScriptEditorTest, AFailedExportIsShownUntilDismissed) {
    open(projectWith(threeTexts));
    controller->setSpotError(QStringLiteral("No lines selected."));
    QToolButton *dismiss = nullptr;
    for (auto *button : editor->findChildren<QToolButton *>())
        if (button->accessibleName() == QStringLiteral("Dismiss message"))
            dismiss = button;
    ASSERT_NE(dismiss, nullptr);
    EXPECT_TRUE(dismiss->isVisible());
    QTest::mouseClick(dismiss, Qt::LeftButton);
    EXPECT_EQ(controller->spotError(), QString());
    EXPECT_FALSE(dismiss->isVisible());
    controller->setSpotError(QStringLiteral("No lines selected."));
    focusList();
    key(Qt::Key_Escape);
    EXPECT_EQ(controller->spotError(), QString());
}

TEST_F(ScriptEditorTest, ACommandWithNothingToActOnSaysSo) {
    open(projectWith(threeTexts));
    QSignalSpy refused(&controller->notices(), &controller::Notices::refused);
    key(Qt::Key_Space);
    controller->selection().selectAll();
    key(Qt::Key_Return);
    ASSERT_EQ(refused.size(), 2);
    EXPECT_EQ(refused.at(0).first().toString(), QStringLiteral("Select a line with audio to play it."));
    EXPECT_EQ(refused.at(1).first().toString(), QStringLiteral("Select exactly one line to edit its text."));
}

} // namespace
} // namespace orlenta::shell
