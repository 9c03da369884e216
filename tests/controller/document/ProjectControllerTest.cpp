#include "controller/ProjectController.h"

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>

#include "controller/casting/VoiceCasting.h"
#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/ScriptProject.h"
#include "model/ProjectStore.h"

namespace orlenta::controller {
namespace {

using test::expectSound;
using test::ScriptProject;
using test::scriptProject;

} // namespace

TEST(ProjectController, OpeningRepairsTheRecordsWithoutMakingThemDirty) {
    model::Project project = scriptProject({{QStringLiteral("a"), QStringLiteral("b")}, {QStringLiteral("c")}});
    const model::LineId a = project.tabs[0].lineIds.at(0);
    const model::LineId b = project.tabs[0].lineIds.at(1);
    const model::LineId c = project.tabs[1].lineIds.at(0);
    project.tabs[0].lineIds = {b, model::LineId::create(), b};
    project.tabs[1].lineIds = {b, c};
    project.activeTabId = model::TabId::create();
    const ScriptProject opened(project);
    EXPECT_EQ(opened->project().tabs[0].lineIds, (model::LineIdList{b, a}));
    EXPECT_EQ(opened->project().tabs[1].lineIds, model::LineIdList{c});
    EXPECT_EQ(opened->project().activeTabId, project.tabs[0].id);
    EXPECT_EQ(opened->selection().selectedLineIds(), QSet{b});
    EXPECT_FALSE(opened->hasUnsavedChanges());
    EXPECT_FALSE(opened->undoManager().canUndo());
    expectSound(*opened);
}

TEST(ProjectController, AnEmptyDocumentGetsAPresetALineAndATab) {
    const ScriptProject opened{model::Project()};
    EXPECT_EQ(opened->project().presets.first().name, QStringLiteral("Default"));
    EXPECT_EQ(opened.tabNames(), QStringList{QStringLiteral("Script 1")});
    EXPECT_FALSE(opened->hasUnsavedChanges());
    expectSound(*opened);
}

TEST(ProjectController, TheNextColorStartsAtTheVoiceCountButNeverAtTheFirst) {
    for (const auto &[voices, expected] : {std::pair{0, 1}, {1, 1}, {5, 5}, {20, 1}, {23, 3}}) {
        model::Project project = scriptProject({{QStringLiteral("a")}});
        for (int i = 0; i < voices; ++i)
            project.voices.append({model::VoiceId::create(), QString::number(i), {}, {}, {}});
        const ScriptProject opened(project);
        const ScriptProject counting(scriptProject({{QStringLiteral("a")}}));
        for (int i = 1; i < expected; ++i)
            (void)counting->voices().nextCastColor();
        EXPECT_EQ(opened->voices().nextCastColor(), counting->voices().nextCastColor()) << voices;
    }
}

TEST(ProjectController, SavingWritesTheRecordsAndCleans) {
    ScriptProject project({{QStringLiteral("a")}}, ScriptProject::Folder::OnDisk);
    int turns = 0;
    onAnyChange<UnsavedChangesChanged>(*project, &*project, [&turns] { ++turns; });
    project->lines().addLine();
    project->lines().setNotes(project.id(1), QStringLiteral("loud"));
    EXPECT_TRUE(project->hasUnsavedChanges());
    ASSERT_TRUE(project->save());
    EXPECT_FALSE(project->hasUnsavedChanges());
    EXPECT_EQ(turns, 2);
    project.reopen();
    EXPECT_EQ(project.line(1).notes, QStringLiteral("loud"));
}

TEST(ProjectController, SavingWritesTheFileThatWasOpenedAndNoOther) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("K.orl"));
    const QString copy = folder.filePath(QStringLiteral("K backup.orl"));
    ASSERT_TRUE(model::ProjectStore::save({scriptProject({{QStringLiteral("a")}}), folder.path(), file}, {}));
    ASSERT_TRUE(QFile::copy(file, copy));
    const auto opened = model::ProjectStore::load(copy, {});
    ASSERT_TRUE(opened);
    ProjectController controller(opened.value());
    controller.lines().addLine();
    ASSERT_TRUE(controller.save());
    EXPECT_EQ(model::ProjectStore::load(copy, {})->project.lines.size(), 2);
    EXPECT_EQ(model::ProjectStore::load(file, {})->project.lines.size(), 1);
}

TEST(ProjectController, AProjectWithoutAFolderCannotBeSavedAndStaysDirty) {
    const ScriptProject project({{QStringLiteral("a")}});
    project->lines().addLine();
    const auto saved = project->save();
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().description(), QStringLiteral("This project has not been saved to a .orl folder yet."));
    EXPECT_TRUE(project->hasUnsavedChanges());
    project->discardChanges();
    EXPECT_FALSE(project->hasUnsavedChanges());
}

TEST(ProjectController, AnObserverSeesOnlyWholeChanges) {
    const ScriptProject project({{QStringLiteral("a")}, {QStringLiteral("b")}});
    int lists = 0;
    const auto check = [&] {
        ++lists;
        expectSound(*project);
    };
    QObject::connect(&*project, &ProjectController::changed, check);
    project->lines().addLine();
    project->tabs().closeTab(project->project().tabs[0].id);
    project->tabs().duplicateTab(project->project().tabs[0].id);
    while (project->undoManager().canUndo())
        project->undoManager().undo();
    EXPECT_GE(lists, 12);
}

} // namespace orlenta::controller
