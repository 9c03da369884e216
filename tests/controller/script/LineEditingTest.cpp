#include "controller/script/LineEditing.h"

#include <gtest/gtest.h>

#include "controller/casting/VoiceCasting.h"
#include "controller/document/UndoManager.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::controller {
namespace {

using test::expectSound;
using test::ScriptProject;

QStringList words(const char *text) {
    return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

TEST(LineEditing, ANewLineTakesVoiceAndSettingsOfTheSelectedLineAndTheCaret) {
    const ScriptProject project({words("a b c")});
    project->voices().assignVoice({project.id(0)}, {QStringLiteral("ana-id"), QStringLiteral("Ana")});
    project->selection().selectAlone(project.id(0));
    project->lines().addLine();
    EXPECT_EQ(project.texts(), words("a b c") + QStringList{QString()});
    EXPECT_EQ(project.line(3).voiceId, project.line(0).voiceId);
    EXPECT_EQ(project.line(3).settings, project.line(0).settings);
    EXPECT_EQ(project.line(3).presetId, project->project().presets.first().id);
    EXPECT_EQ(project->selection().editingLineId(), project.id(3));
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(3));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Add Line"));
    project->undoManager().undo();
    EXPECT_EQ(project.texts(), words("a b c"));
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(0));
}

TEST(LineEditing, WithSeveralSelectedLinesANewLineTakesTheLastLinesSettings) {
    const ScriptProject project({words("a b c"), words("d")});
    project->voices().assignVoice({project.id(2)}, {QStringLiteral("ana-id"), QStringLiteral("Ana")});
    project->selection().selectAll();
    project->lines().addLine();
    EXPECT_EQ(project.line(3).voiceId, project.line(2).voiceId);
    expectSound(*project);
}

TEST(LineEditing, AnInsertedLineStandsBelowTheLastSelectedOneAndTakesItsVoice) {
    const ScriptProject project({words("a b c")});
    project->voices().assignVoice({project.id(1)}, {QStringLiteral("ana-id"), QStringLiteral("Ana")});
    project->selection().selectAlone(project.id(0));
    project->selection().extendDown();
    project->lines().insertLineBelow();
    EXPECT_EQ(project.texts(), QStringList({QStringLiteral("a"), QStringLiteral("b"), QString(), QStringLiteral("c")}));
    EXPECT_EQ(project.line(2).voiceId, project.line(1).voiceId);
    EXPECT_EQ(project->selection().editingLineId(), project.id(2));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Insert Line"));
    project->undoManager().undo();
    EXPECT_EQ(project.texts(), words("a b c"));
    expectSound(*project);
}

TEST(LineEditing, WithoutAnotherLineTheVoiceSelectedInTheServiceIsCast) {
    model::Project records = test::scriptProject({words("a"), {}});
    records.activeTabId = records.tabs[1].id;
    const ScriptProject project(records);
    project->lines().setNewLineVoiceProvider([] {
        return ServiceVoice{QStringLiteral("ben-id"), QStringLiteral("Ben")};
    });
    project->lines().addLine();
    ASSERT_NE(project->voices().projectVoiceFor(project.id(0)), nullptr);
    EXPECT_EQ(project->voices().projectVoiceFor(project.id(0))->castName, QStringLiteral("Ben"));
    project->undoManager().undo();
    EXPECT_TRUE(project->project().voices.isEmpty());
}

TEST(LineEditing, ADuplicateStandsBelowItsSourceAndPlaysTheSameFiles) {
    ScriptProject project({words("a b")}, ScriptProject::Folder::OnDisk);
    project.addTake(0);
    project->takes().setGenerating(GenerationState::Generating, project.id(0));
    project->lines().duplicateLine(project.id(0));
    EXPECT_EQ(project.texts(), words("a a b"));
    EXPECT_EQ(project.line(1).takes, project.line(0).takes);
    EXPECT_NE(project.id(1), project.id(0));
    EXPECT_FALSE(project->runtime().state(project.id(1)).isGenerating);
    project->takes().deleteGeneratedAudio(project.id(1));
    EXPECT_FALSE(project->runtime().hasGeneratedAudio(project.id(1)));
    EXPECT_TRUE(project->runtime().hasGeneratedAudio(project.id(0)));
    EXPECT_FALSE(project->media().audioURL(project.line(0)).isEmpty());
    expectSound(*project);
}

TEST(LineEditing, DeletingSelectsTheNeighbourThatTakesTheIndex) {
    struct Case {
        qsizetype deleted;
        qsizetype selected;
        const char *expected;
    };
    for (const Case &c : {Case{0, 0, "b"}, {1, 1, "c"}, {2, 2, "b"}, {0, 2, "c"}}) {
        const ScriptProject project({words("a b c"), words("d")});
        project->selection().selectAlone(project.id(c.selected));
        project->lines().deleteLine(project.id(c.deleted));
        const auto selected = project->selection().singleSelectedLineId();
        ASSERT_TRUE(selected);
        EXPECT_EQ(project->lines().find(*selected)->text, QString::fromLatin1(c.expected));
        expectSound(*project);
        project->undoManager().undo();
        EXPECT_EQ(project.texts(), words("a b c"));
    }
}

TEST(LineEditing, DeletingTheOnlyLineLeavesAnEmptyOneAndUndoRestoresItsTakes) {
    ScriptProject project({words("a"), words("b")}, ScriptProject::Folder::OnDisk);
    const model::TakeId take = project.addTake(0);
    const model::LineId old = project.id(0);
    project->lines().deleteLine(old);
    EXPECT_EQ(project.texts(), QStringList{QString()});
    EXPECT_NE(project.id(0), old);
    EXPECT_TRUE(project.line(0).takes.isEmpty());
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(0));
    project->undoManager().undo();
    EXPECT_EQ(project.id(0), old);
    EXPECT_EQ(project.line(0).activeTakeId, take);
    EXPECT_TRUE(project->runtime().hasGeneratedAudio(old));
}

TEST(LineEditing, SplittingMakesALineOfEachSentenceWithoutTakes) {
    ScriptProject project({{QStringLiteral("Dr. Smith went home. He slept."), QStringLiteral("after")}},
                          ScriptProject::Folder::OnDisk);
    project.addTake(0);
    project->lines().setNotes(project.id(0), QStringLiteral("slowly"));
    project->selection().selectAlone(project.id(0));
    ASSERT_TRUE(project->lines().canSplitLine());
    project->lines().splitLine();
    EXPECT_EQ(project.texts(), (QStringList{QStringLiteral("Dr. Smith went home."), QStringLiteral("He slept."),
                                            QStringLiteral("after")}));
    EXPECT_EQ(project.line(1).notes, QStringLiteral("slowly"));
    EXPECT_TRUE(project.line(0).takes.isEmpty());
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(0));
    EXPECT_EQ(project->selection().editingLineId(), std::nullopt);
    expectSound(*project);
    project->undoManager().undo();
    EXPECT_EQ(project.line(0).takes.size(), 1);
}

TEST(LineEditing, NotesSurviveUndoAndRedoOfEarlierSteps) {
    const QString notes = QStringLiteral("softer");
    ScriptProject project({words("a b c")}, ScriptProject::Folder::OnDisk);
    const model::LineId a = project.id(0);
    const model::LineId b = project.id(1);
    project->lines().duplicateLine(a);
    project->lines().setNotes(b, notes);
    project->undoManager().undo();
    EXPECT_EQ(project->lines().find(b)->notes, notes);
    project->undoManager().redo();
    EXPECT_EQ(project->lines().find(b)->notes, notes);

    project->lines().deleteLine(b);
    project->undoManager().undo();
    EXPECT_EQ(project->lines().find(b)->notes, notes);
    project->lines().setNotes(b, QString());
    project->undoManager().undo();
    EXPECT_EQ(project->lines().find(b)->notes, QString());
    project->lines().setNotes(b, notes);
    project->lines().addLine();
    ASSERT_TRUE(project->save());
    project.reopen();
    EXPECT_EQ(project->lines().find(b)->notes, notes);
}

TEST(LineEditing, ALineWithoutOwnSettingsPassesItsPresetOnWhenSplit) {
    model::Project records = test::scriptProject({{QStringLiteral("One. Two.")}});
    model::ProjectPreset preset = model::ProjectPreset::processDefault();
    preset.id = model::PresetId::create();
    preset.settings.stability = 0.125;
    records.presets = {preset};
    records.lines.update(records.tabs.first().lineIds.first(), [&preset](model::ProjectLine &line) {
        line.settings.reset();
        line.presetId = preset.id;
    });
    const ScriptProject project(records);
    project->lines().splitLine();
    ASSERT_EQ(project.texts().size(), 2);
    EXPECT_EQ(project.line(1).settings, preset.settings);
}

TEST(LineEditing, ImpossibleOperationsLeaveNoStep) {
    const ScriptProject project({{QStringLiteral("Just one sentence."), QStringLiteral("b")}});
    LineEditing &lines = project->lines();
    lines.splitLine();
    lines.moveLineUp();
    lines.deleteLine(model::LineId::create());
    lines.duplicateLine(model::LineId::create());
    project->selection().selectAll();
    lines.splitLine();
    EXPECT_FALSE(lines.canSplitLine());
    project->selection().selectAlone(project.id(1));
    EXPECT_FALSE(lines.canMoveDown());
    lines.moveLineDown();
    EXPECT_FALSE(project->undoManager().canUndo());
    EXPECT_FALSE(project->hasUnsavedChanges());
}

TEST(LineEditing, SelectedLinesMoveTogether) {
    ScriptProject project({{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), QStringLiteral("d"),
                            QStringLiteral("e"), QStringLiteral("f")}});
    LineEditing &lines = project->lines();
    const auto order = [&] { return project.texts().join(QString()).toStdString(); };
    const auto select = [&](const QString &texts) {
        project.clearSelection();
        for (qsizetype i = 0; i < project.texts().size(); ++i)
            if (texts.contains(project.line(i).text))
                project->selection().toggle(project.id(i));
    };
    select(QStringLiteral("cd"));
    lines.moveLineUp();
    EXPECT_EQ(order(), "acdbef");
    lines.moveLineUp();
    EXPECT_EQ(order(), "cdabef");
    EXPECT_FALSE(lines.canMoveUp());
    lines.moveLineUp();
    EXPECT_EQ(order(), "cdabef");
    project->undoManager().undo();
    project->undoManager().undo();
    EXPECT_EQ(order(), "abcdef");
    EXPECT_FALSE(project->undoManager().canUndo());
    // Lines apart each pass their neighbour; those at the edge stay there.
    select(QStringLiteral("acdf"));
    lines.moveLineUp();
    EXPECT_EQ(order(), "acdbfe");
    lines.moveLineDown();
    EXPECT_EQ(order(), "bacdef");
    EXPECT_TRUE(lines.canMoveDown());
    lines.moveLineDown();
    EXPECT_EQ(order(), "beacdf");
    lines.moveLineDown();
    EXPECT_EQ(order(), "beacdf");
    EXPECT_FALSE(lines.canMoveDown());
    EXPECT_EQ(project->selection().selectedLineIds().size(), 4);
    project->selection().selectAll();
    EXPECT_FALSE(lines.canMoveUp());
    EXPECT_FALSE(lines.canMoveDown());
}

TEST(LineEditing, MovingSwapsWithTheNeighbourAndKeepsTheSelection) {
    const ScriptProject project({words("a b c")});
    project->selection().selectAlone(project.id(1));
    const model::LineId moved = project.id(1);
    project->lines().moveLineUp();
    EXPECT_EQ(project.texts(), words("b a c"));
    EXPECT_EQ(project->selection().singleSelectedLineId(), moved);
    project->lines().moveLineDown();
    project->lines().moveLineDown();
    EXPECT_EQ(project.texts(), words("a c b"));
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Move Line"));
    expectSound(*project);
}

} // namespace orlenta::controller
