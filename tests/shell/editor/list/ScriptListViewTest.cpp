#include <algorithm>
#include <functional>

#include <QtWidgets/QScrollBar>

#include "controller/document/UndoManager.h"
#include "controller/script/TabEditing.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/ScriptEditorFixture.h"

namespace orlenta::shell {
namespace {

/// Texts of varying length, from empty to about eight lines.
QStringList manyTexts(int count) {
    const QString words =
        QStringLiteral("The harbour lights went out one by one, and nobody on the quay said a word. ");
    QStringList texts;
    for (int index = 0; index < count; ++index)
        texts.append(QStringLiteral("%1 ").arg(index) + words.repeated(index % 7).left((index * 37) % 480));
    return texts;
}

class ScriptListViewTest : public ScriptEditorFixture {
protected:
    ScriptListView &list() { return editor->list(); }

    QList<LineRow *> rowsTopDown() {
        QList<LineRow *> rows;
        for (LineRow *row : list().rows())
            if (row->isVisible() && row->y() + row->height() > 0 && row->y() < list().viewport()->height())
                rows.append(row);
        std::sort(rows.begin(), rows.end(), [](const LineRow *a, const LineRow *b) { return a->y() < b->y(); });
        return rows;
    }

    /// Every visible row shows its own line and starts where the previous one ends, without gaps.
    void expectOneUnbrokenColumn() {
        const QList<LineRow *> rows = rowsTopDown();
        ASSERT_FALSE(rows.isEmpty());
        for (qsizetype at = 0; at < rows.size(); ++at) {
            const LineRow *row = rows.at(at);
            EXPECT_EQ(row->textField().sourceText(), controller->lines().find(row->lineId())->text);
            EXPECT_EQ(row->height(), row->heightForWidth(row->width()));
            if (at > 0) {
                EXPECT_EQ(row->y(), rows.at(at - 1)->y() + rows.at(at - 1)->height());
            }
        }
        EXPECT_LE(rows.first()->y(), 8);
        EXPECT_GE(rows.last()->y() + rows.last()->height(), list().viewport()->height() - 8);
    }
};

TEST_F(ScriptListViewTest, TenThousandLinesNeedOnlyTheVisibleRows) {
    open(projectWith(manyTexts(10000)));
    const int end = list().verticalScrollBar()->maximum();
    EXPECT_GT(end, 500000);
    for (const int target : {0, 333, 40000, 40100, 39000, end / 2, end, end - 500, 0}) {
        list().verticalScrollBar()->setValue(target);
        expectOneUnbrokenColumn();
    }
    EXPECT_LE(list().poolSize(), 40);
}

TEST_F(ScriptListViewTest, VisibleRowsNeverJumpWhenEstimatesAreCorrected) {
    open(projectWith(manyTexts(400)), {760, 720});
    QScrollBar *bar = list().verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    for (const int step : {61, 61, 150, -61, -200, -200, -200, 333, -333, -500, -500, 97}) {
        QHash<model::LineId, int> before;
        for (const LineRow *row : rowsTopDown())
            before.insert(row->lineId(), row->y());
        bar->setValue(bar->value() + step);
        int compared = 0;
        for (const LineRow *row : rowsTopDown()) {
            if (!before.contains(row->lineId()))
                continue;
            EXPECT_EQ(row->y(), before.value(row->lineId()) - step);
            ++compared;
        }
        EXPECT_GT(compared, 0);
        expectOneUnbrokenColumn();
    }
}

TEST_F(ScriptListViewTest, ARowBeingEditedKeepsItsLineOutOfView) {
    open(projectWith(manyTexts(2000)));
    QTest::keyClick(&list(), Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    LineRow *edited = rowAt(0);
    list().verticalScrollBar()->setValue(30000);
    ASSERT_EQ(rowAt(0), edited);
    EXPECT_LT(edited->y(), 0);
    QTest::keyClicks(&edited->textField(), QStringLiteral("far away"));
    EXPECT_TRUE(textAt(0).endsWith(QStringLiteral("far away")));
    list().verticalScrollBar()->setValue(0);
    EXPECT_TRUE(edited->textField().hasFocus());
    expectOneUnbrokenColumn();
}

TEST_F(ScriptListViewTest, ARowOutOfViewKeepsItsCaretWhileAnotherWindowIsActive) {
    open(projectWith(manyTexts(2000)));
    rowAt(0)->editNotes();
    LineRow *noted = rowAt(0);
    auto *notes = qobject_cast<NotesField *>(QApplication::focusWidget());
    ASSERT_NE(notes, nullptr);
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    list().verticalScrollBar()->setValue(30000);
    EXPECT_EQ(rowAt(0), noted);
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
    EXPECT_TRUE(notes->hasFocus());
    QTest::keyClicks(notes, QStringLiteral("softer"));
    EXPECT_EQ(controller->lines().find(idAt(0))->notes, QStringLiteral("softer"));
}

TEST_F(ScriptListViewTest, ARecycledRowCarriesNothingOver) {
    open(projectWith(manyTexts(300)));
    QTest::keyClick(&list(), Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    QTest::keyClicks(&rowAt(0)->textField(), QStringLiteral("typed"));
    QTest::keyClick(&rowAt(0)->textField(), Qt::Key_Escape);
    for (int target = 0; target < 12000; target += 400) {
        list().verticalScrollBar()->setValue(target);
        for (const LineRow *row : rowsTopDown()) {
            const bool isFirst = row->lineId() == idAt(0);
            EXPECT_FALSE(row->textField().document()->isUndoAvailable());
            EXPECT_FALSE(row->textField().allowsEditing());
            EXPECT_EQ(row->content().isSelected, isFirst);
        }
    }
}

TEST_F(ScriptListViewTest, RowsBelowMakeRoomForTextThatGrows) {
    open(projectWith(manyTexts(30)));
    QTest::keyClick(&list(), Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    const int before = rowAt(1)->y();
    QTest::keyClick(&rowAt(0)->textField(), Qt::Key_Return);
    QTest::keyClicks(&rowAt(0)->textField(), QStringLiteral("a second paragraph"));
    EXPECT_GT(rowAt(1)->y(), before + 10);
    expectOneUnbrokenColumn();
}

/// The caret is in the empty notes of the removed line.
TEST_F(ScriptListViewTest, RemovingALineWithOpenNotesKeepsTheLayoutIntact) {
    struct Case {
        const char *what;
        qsizetype line;
        std::function<void()> takeAway;
    };
    const Case cases[] = {
        {"another tab", 2, [this] { controller->tabs().selectNextTab(); }},
        {"a new tab", 2, [this] { controller->tabs().addTab(); }},
        {"the last line deleted", 3, [this] { controller->lines().deleteLine(idAt(3)); }},
        {"a middle line deleted", 1, [this] { controller->lines().deleteLine(idAt(1)); }},
        {"an added line undone", 4, [this] { controller->undoManager().undo(); }},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.what);
        open(projectWith(manyTexts(4)));
        controller->tabs().addTab();
        controller->tabs().selectPreviousTab();
        if (each.line == 4) {
            controller->lines().addLine();
            ASSERT_TRUE(hasCaret(4));
            controller->selection().setEditingLineId({});
        }
        rowAt(each.line)->editNotes();
        auto *notes = qobject_cast<NotesField *>(QApplication::focusWidget());
        ASSERT_NE(notes, nullptr);
        const model::LineId gone = idAt(each.line);
        each.takeAway();
        EXPECT_EQ(list().rowFor(gone), nullptr);
        EXPECT_FALSE(notes->hasFocus());
        int y = rowsTopDown().first()->y();
        for (const LineRow *row : rowsTopDown()) {
            EXPECT_EQ(row->y(), y);
            EXPECT_EQ(row->height(), row->heightForWidth(row->width()));
            y += row->height();
        }
        EXPECT_EQ(rowsTopDown().size(), controller->scriptLineIds().size());
    }
}

TEST_F(ScriptListViewTest, FollowsAddedRemovedAndMovedLines) {
    open(projectWith(manyTexts(50)));
    controller->selection().selectAlone(idAt(3));
    controller->lines().moveLineUp();
    expectOneUnbrokenColumn();
    controller->lines().deleteLine(idAt(0));
    expectOneUnbrokenColumn();
    controller->lines().addLine();
    ASSERT_TRUE(hasCaret(49));
    expectOneUnbrokenColumn();
    const QRect added(rowAt(49)->pos(), rowAt(49)->size());
    EXPECT_TRUE(list().viewport()->rect().contains(added));
    editor->resize(430, 500);
    expectOneUnbrokenColumn();
}

} // namespace
} // namespace orlenta::shell
