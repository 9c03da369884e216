#include <QtGui/QClipboard>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QPlainTextEdit>

#include "controller/document/UndoManager.h"
#include "shell/controls/WholeTextDialog.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/ScriptEditorFixture.h"

namespace orlenta::shell {
namespace {

using testing::buttonNamed;

/// Texts that are legal in a project and too long for a row.
class LongTextsTest : public ScriptEditorFixture {
protected:
    void openWithText(const QString &text) {
        model::Project project = projectWith({text, QStringLiteral("Two.")});
        open(std::move(project));
        ASSERT_NE(rowAt(0), nullptr);
    }
    [[nodiscard]] QString notesAt(qsizetype index) const { return controller->lines().find(idAt(index))->notes; }
    [[nodiscard]] WholeTextDialog *dialog() const {
        for (auto *open : editor->findChildren<WholeTextDialog *>())
            if (open->isVisible())
                return open;
        return nullptr;
    }
    void typeInDialog(const QString &text) {
        ASSERT_TRUE(QTest::qWaitFor([this] { return dialog() != nullptr; }, 5000));
        QTest::keyClicks(&dialog()->field(), text);
        dialog()->reject();
    }
};

TEST_F(LongTextsTest, ARowShowsTheStartAndTheDialogEditsAll) {
    for (const QString &text :
         {QString(100'000, u'a'), QString(200'000, u'\n'), QStringLiteral("Words and words. ").repeated(60'000)}) {
        openWithText(text);
        const LineRow &row = *rowAt(0);
        EXPECT_LE(row.textField().toPlainText().size(), 2'000);
        EXPECT_EQ(row.textField().sourceText(), text);
        EXPECT_LT(row.height(), editor->height());
        EXPECT_LT(row.accessibleName().size(), 2'000);
        QAbstractButton *all = buttonNamed(row, QStringLiteral("Show All"));
        ASSERT_NE(all, nullptr);
        QTest::mouseClick(all, Qt::LeftButton);
        typeInDialog(QStringLiteral("X"));
        EXPECT_EQ(textAt(0), u'X' + text);
        EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Typing"));
        controller->undoManager().undo();
        EXPECT_EQ(textAt(0), text);
        EXPECT_EQ(rowAt(0)->textField().sourceText(), text);
    }
}

TEST_F(LongTextsTest, EditingALongTextByKeyOpensTheDialog) {
    const QString text(50'000, u'a');
    openWithText(text);
    controller->selection().selectAlone(idAt(0));
    QTest::keyClick(&editor->list(), Qt::Key_Return);
    typeInDialog(QStringLiteral("By key. "));
    EXPECT_EQ(textAt(0), QStringLiteral("By key. ") + text);
    EXPECT_FALSE(controller->selection().editingLineId().has_value());
}

TEST_F(LongTextsTest, AMegabytePastedIntoALineIsKeptWhole) {
    openWithText(QStringLiteral("Start end"));
    editor->commands().edit(idAt(0));
    ASSERT_TRUE(hasCaret(0));
    rowAt(0)->textField().setSourceSelection({6, 3});
    const QString pasted = QStringLiteral("pasted words ").repeated(80'000);
    QGuiApplication::clipboard()->setText(pasted);
    rowAt(0)->textField().paste();
    EXPECT_EQ(textAt(0), QStringLiteral("Start ") + pasted);
    typeInDialog(QStringLiteral("Typed. "));
    EXPECT_EQ(textAt(0), QStringLiteral("Typed. Start ") + pasted);
    EXPECT_LE(rowAt(0)->textField().toPlainText().size(), 2'000);
}

TEST_F(LongTextsTest, LongNotesAreShownCutAndEditedWhole) {
    const QString notes = QString(1'000'000, u'n');
    model::Project project = projectWith({QStringLiteral("One.")});
    model::ProjectLine line = *project.linesInOrder().front();
    line.notes = notes;
    project.lines.insert(line);
    project.voices.first().castName = notes;
    open(std::move(project));
    const auto *field = rowAt(0)->findChild<NotesField *>();
    ASSERT_NE(field, nullptr);
    EXPECT_LE(field->toPlainText().size(), 2'000);
    EXPECT_LT(rowAt(0)->height(), editor->height());
    rowAt(0)->editNotes();
    typeInDialog(QStringLiteral("N"));
    EXPECT_EQ(notesAt(0), u'N' + notes);
    QGuiApplication::clipboard()->setText(notes);
    controller->lines().setNotes(idAt(0), QStringLiteral("short"));
    editor->list().refreshRow(idAt(0));
    auto *again = rowAt(0)->findChild<NotesField *>();
    EXPECT_EQ(again->toPlainText(), QStringLiteral("short"));
    again->selectAll();
    again->paste();
    EXPECT_EQ(notesAt(0), notes);
}

TEST_F(LongTextsTest, AnOrdinaryLongLineIsEditedInItsRow) {
    const QString text = QStringLiteral("Nine words make up this sentence, over and over. ").repeated(150);
    openWithText(text);
    EXPECT_EQ(rowAt(0)->textField().toPlainText(), text);
    EXPECT_EQ(buttonNamed(*rowAt(0), QStringLiteral("Show All")), nullptr);
    editor->commands().edit(idAt(0));
    ASSERT_TRUE(hasCaret(0));
    QTest::keyClicks(&rowAt(0)->textField(), QStringLiteral("End."));
    EXPECT_EQ(textAt(0), text + QStringLiteral("End."));
}

} // namespace
} // namespace orlenta::shell
