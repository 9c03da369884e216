#include "controller/script/LineClipboard.h"

#include <gtest/gtest.h>

#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"

namespace orlenta::controller {
namespace {

using test::expectSound;
using test::ScriptProject;

class LineClipboardTest : public ::testing::Test {
protected:
    ScriptProject project{{{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}, {QStringLiteral("d")}},
                          ScriptProject::Folder::OnDisk};
    LineClipboard &clipboard = project->clipboard();
    Selection &selection = project->selection();

    [[nodiscard]] QString script() const { return project.texts().join(QString()); }
    void selectFirst(qsizetype count) {
        selection.selectAlone(project.id(0));
        for (qsizetype i = 1; i < count; ++i)
            selection.extendDown();
    }
};

} // namespace

TEST_F(LineClipboardTest, PastedLinesAreNewOnesThatPlayTheSameAudio) {
    project.addTake(0);
    const model::TakeId second = project.addTake(0);
    selectFirst(2);
    const QByteArray bytes = clipboard.copiedLines().value();
    ASSERT_TRUE(clipboard.pasteLines(bytes));
    ASSERT_TRUE(clipboard.pasteLines(bytes));
    EXPECT_EQ(script(), QStringLiteral("abababc"));
    const model::ProjectLine copy = project.line(2);
    EXPECT_EQ(copy.takes.last().filename, project.line(0).takes.last().filename);
    EXPECT_NE(copy.takes.last().id, second);
    EXPECT_EQ(copy.activeTakeId, copy.takes.last().id);
    EXPECT_TRUE(project->runtime().hasGeneratedAudio(project.id(4)));
    EXPECT_EQ(selection.selectionAnchorId(), project.id(4));
    EXPECT_EQ(selection.selectionFocusId(), project.id(5));
    expectSound(*project);
    project->undoManager().undo();
    EXPECT_EQ(script(), QStringLiteral("ababc"));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Paste Lines"));
}

TEST_F(LineClipboardTest, CuttingEveryLineLeavesAnEmptyOneAndAFailedWriteLeavesAll) {
    selectFirst(3);
    EXPECT_FALSE(clipboard.cutLines([](const QByteArray &) { return false; }));
    EXPECT_EQ(script(), QStringLiteral("abc"));
    QByteArray cut;
    EXPECT_TRUE(clipboard.cutLines([&](const QByteArray &bytes) {
        cut = bytes;
        return true;
    }));
    EXPECT_EQ(project.texts(), QStringList{QString()});
    expectSound(*project);
    project.clearSelection();
    ASSERT_TRUE(clipboard.pasteLines(cut));
    EXPECT_EQ(script(), QStringLiteral("abc"));
    EXPECT_EQ(project.texts().size(), 4);
    project->undoManager().undo();
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Cut Lines"));
    project->undoManager().undo();
    EXPECT_EQ(script(), QStringLiteral("abc"));
}

TEST_F(LineClipboardTest, LinesOfAnotherProjectAndOtherBytesPasteNothing) {
    const ScriptProject other({{QStringLiteral("x")}});
    const QByteArray foreign = other->clipboard().copiedLines().value();
    for (const QByteArray &bytes : {foreign, QByteArray(), QByteArray("{}"), QByteArray("text")}) {
        EXPECT_FALSE(clipboard.canPaste(bytes));
        EXPECT_FALSE(clipboard.pasteLines(bytes));
    }
    project.clearSelection();
    EXPECT_EQ(clipboard.copiedLines(), std::nullopt);
    EXPECT_FALSE(project->undoManager().canUndo());
}

TEST_F(LineClipboardTest, DeletingSeveralLinesIsOneStepAndSelectsWhatFollows) {
    selectFirst(2);
    project->lines().deleteLines(selection.selectedLinesInScript(), LineEditing::Removal::Delete);
    EXPECT_EQ(script(), QStringLiteral("c"));
    EXPECT_EQ(selection.singleSelectedLineId(), project.id(0));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Delete Lines"));
    project->undoManager().undo();
    EXPECT_EQ(script(), QStringLiteral("abc"));
    EXPECT_FALSE(project->undoManager().canUndo());
}

TEST_F(LineClipboardTest, LinesMoveWithinTheirTabAndAreCopiedIntoOthers) {
    project->lines().moveLine(project.id(0), 1);
    project->lines().moveLine(model::LineId::create(), 0);
    EXPECT_FALSE(project->undoManager().canUndo());
    project->lines().moveLine(project.id(0), 99);
    EXPECT_EQ(script(), QStringLiteral("bca"));
    const model::ProjectTab other = project->project().tabs[1];
    project->lines().copyLineToTab(project.id(0), other.id, 0);
    project->lines().copyLineToTab(project.id(1), other.id);
    QString copied;
    for (const model::LineId &id : project->project().tabs[1].lineIds)
        copied += project->lines().find(id)->text;
    EXPECT_EQ(copied, QStringLiteral("bdc"));
    EXPECT_EQ(script(), QStringLiteral("bca"));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Copy Line"));
    expectSound(*project);
}

} // namespace orlenta::controller
