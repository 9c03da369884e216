#include "controller/script/Selection.h"

#include <gtest/gtest.h>

#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"

namespace orlenta::controller {
namespace {

using test::expectSound;
using test::ScriptProject;

class SelectionTest : public ::testing::Test {
protected:
    ScriptProject project{
        {{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d")}, {QStringLiteral("e")}}};
    Selection &selection = project->selection();

    [[nodiscard]] QString selected() const {
        QString texts;
        for (const model::LineId &id : selection.selectedLinesInScript())
            texts += project->project().lines.find(id)->text;
        return texts;
    }
};

} // namespace

TEST_F(SelectionTest, WalksToTheEndsAndStaysThere) {
    selection.selectAlone(project.id(2));
    selection.selectNext();
    EXPECT_EQ(selected(), QStringLiteral("d"));
    selection.selectNext();
    EXPECT_EQ(selected(), QStringLiteral("d"));
    for (int i = 0; i < 5; ++i)
        selection.selectPrevious();
    EXPECT_EQ(selected(), QStringLiteral("a"));
    EXPECT_FALSE(project->hasUnsavedChanges());
}

TEST_F(SelectionTest, ExtendsAndShrinksAroundTheAnchor) {
    selection.selectAlone(project.id(1));
    selection.extendDown();
    selection.extendDown();
    EXPECT_EQ(selected(), QStringLiteral("bcd"));
    selection.extendDown();
    EXPECT_EQ(selected(), QStringLiteral("bcd"));
    for (int i = 0; i < 3; ++i)
        selection.extendUp();
    EXPECT_EQ(selected(), QStringLiteral("ab"));
    EXPECT_EQ(selection.selectionAnchorId(), project.id(1));
    EXPECT_EQ(selection.selectionFocusId(), project.id(0));
}

TEST_F(SelectionTest, TogglingAddsAndRemovesAndEndsEditing) {
    selection.selectAlone(project.id(0));
    selection.setEditingLineId(project.id(0));
    selection.toggle(project.id(2));
    EXPECT_EQ(selected(), QStringLiteral("ac"));
    EXPECT_EQ(selection.editingLineId(), std::nullopt);
    selection.toggle(project.id(0));
    selection.toggle(project.id(2));
    EXPECT_EQ(selected(), QString());
    expectSound(*project);
}

TEST_F(SelectionTest, SelectAllSpansTheTabOnly) {
    selection.selectAll();
    EXPECT_EQ(selected(), QStringLiteral("abcd"));
    EXPECT_EQ(selection.selectionAnchorId(), project.id(0));
    EXPECT_EQ(selection.selectionFocusId(), project.id(3));
    EXPECT_EQ(project->project().selection.selectedLineIds.size(), 4);
    EXPECT_EQ(project->project().selection.activeLineId, std::nullopt);
}

TEST_F(SelectionTest, ALineOfAnotherTabCannotBeSelected) {
    selection.selectAlone(project->project().tabs[1].lineIds.first());
    EXPECT_EQ(selected(), QString());
    expectSound(*project);
}

TEST_F(SelectionTest, SelectingAnotherLineCommitsWhatIsBeingTyped) {
    selection.selectAlone(project.id(0));
    selection.setEditingLineId(project.id(0));
    project->typing().beginEditing(project.id(0));
    project->typing().type(project.id(0), QStringLiteral("aa"));
    EXPECT_FALSE(project->undoManager().canUndo());
    selection.selectAlone(project.id(1));
    EXPECT_EQ(selection.editingLineId(), std::nullopt);
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Typing"));
}

TEST_F(SelectionTest, TheLastNonEmptyTextSelectionOutlivesACaret) {
    selection.setTextSelectionRange(TextRange{2, 3});
    selection.setTextSelectionRange(TextRange{1, 0});
    EXPECT_EQ(selection.textSelectionRange(), (TextRange{1, 0}));
    EXPECT_EQ(selection.lastNonEmptySelection(), (TextRange{2, 3}));
}

} // namespace orlenta::controller
