#include "controller/script/TabEditing.h"

#include <gtest/gtest.h>

#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/script/Selection.h"
#include "controller/ScriptProject.h"
#include "controller/takes/LineRuntime.h"

namespace orlenta::controller {
namespace {

using test::expectSound;
using test::ScriptProject;

QStringList list(std::initializer_list<const char *> texts) {
    QStringList all;
    for (const char *text : texts)
        all.append(QString::fromUtf8(text));
    return all;
}

model::TabId tabAt(const ScriptProject &project, qsizetype index) {
    return project->project().tabs.at(index).id;
}

} // namespace

TEST(TabEditing, AnAddedTabIsNamedByTheCountOnlyAndShown) {
    const ScriptProject project({list({"a"})});
    project->tabs().renameTab(tabAt(project, 0), QStringLiteral("Script 2"));
    project->tabs().addTab();
    EXPECT_EQ(project.tabNames(), list({"Script 2", "Script 2"}));
    EXPECT_EQ(project->project().activeTabId, tabAt(project, 1));
    EXPECT_EQ(project.texts(), QStringList{QString()});
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(0));
    expectSound(*project);
    project->undoManager().undo();
    EXPECT_EQ(project->project().activeTabId, tabAt(project, 0));
    EXPECT_EQ(project.texts(), list({"a"}));
}

TEST(TabEditing, ClosingShowsTheTabThatTakesTheIndexAndDropsTheLines) {
    const ScriptProject project({list({"a"}), list({"b"}), list({"c"})});
    project->tabs().setActiveTab(tabAt(project, 1));
    project->tabs().closeTab(tabAt(project, 1));
    EXPECT_EQ(project.texts(), list({"c"}));
    project->tabs().closeTab(tabAt(project, 1));
    EXPECT_EQ(project.texts(), list({"a"}));
    EXPECT_EQ(project->project().lines.size(), 1);
    EXPECT_FALSE(project->tabs().canCloseTab());
    project->tabs().closeTab(tabAt(project, 0));
    EXPECT_EQ(project->project().tabs.size(), 1);
    expectSound(*project);
    project->undoManager().undo();
    project->undoManager().undo();
    EXPECT_FALSE(project->undoManager().canUndo());
    EXPECT_EQ(project.texts(), list({"b"}));
    expectSound(*project);
}

TEST(TabEditing, ClosingTheOnlyTabWithLinesLeavesANewOne) {
    ScriptProject project({{QStringLiteral("a")}, {}});
    project->tabs().closeTab(tabAt(project, 0));
    test::expectSound(*project);
    EXPECT_EQ(project.texts(), QStringList{QString()});
    project->undoManager().undo();
    EXPECT_EQ(project.texts(), QStringList{QStringLiteral("a")});
    EXPECT_EQ(project->project().lines.size(), 1);
}

TEST(TabEditing, ShowingAnotherTabEndsEditingAndDirtiesWithoutAStep) {
    const ScriptProject project({list({"a", "b"}), list({"c"})});
    project->selection().selectAlone(project.id(1));
    project->selection().setEditingLineId(project.id(1));
    project->typing().beginEditing(project.id(1));
    project->tabs().setActiveTab(tabAt(project, 1));
    EXPECT_TRUE(project->hasUnsavedChanges());
    EXPECT_FALSE(project->undoManager().canUndo());
    EXPECT_EQ(project->selection().editingLineId(), std::nullopt);
    EXPECT_TRUE(project->selection().selectedLineIds().isEmpty());
    project->tabs().selectPreviousTab();
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(0));
    project->tabs().selectPreviousTab();
    EXPECT_EQ(project.texts(), list({"a", "b"}));
    project->tabs().setActiveTab(model::TabId::create());
    EXPECT_EQ(project.texts(), list({"a", "b"}));
}

TEST(TabEditing, MovingPutsATabBeforeItsDestination) {
    struct Case {
        qsizetype from;
        qsizetype destination;
        const char *expected;
    };
    for (const Case &c : {Case{0, 2, "2,1,3"},
                          {0, 3, "2,3,1"},
                          {2, 0, "3,1,2"},
                          {0, 99, "2,3,1"},
                          {1, -5, "2,1,3"},
                          {1, 1, "1,2,3"},
                          {1, 2, "1,2,3"},
                          {2, 3, "1,2,3"}}) {
        const ScriptProject project({list({"a"}), list({"b"}), list({"c"})});
        project->tabs().moveTab(tabAt(project, c.from), c.destination);
        const QString order = project.tabNames().join(u',').remove(QStringLiteral("Script "));
        EXPECT_EQ(order, QString::fromLatin1(c.expected));
        EXPECT_EQ(project->undoManager().canUndo(), order != QStringLiteral("1,2,3"));
        expectSound(*project);
    }
}

TEST(TabEditing, ADuplicatedTabHoldsCopiesThatNameTheSameFiles) {
    ScriptProject project({list({"a", "b"}), list({"c"})}, ScriptProject::Folder::OnDisk);
    project.addTake(1);
    const QList<model::Take> takes = project.line(1).takes;
    project->tabs().duplicateTab(tabAt(project, 0));
    EXPECT_EQ(project.tabNames(), list({"Script 1", "Script 1 copy", "Script 2"}));
    EXPECT_EQ(project.texts(), list({"a", "b"}));
    EXPECT_EQ(project->project().activeTabId, tabAt(project, 1));
    EXPECT_EQ(project.line(1).takes, takes);
    EXPECT_TRUE(project->runtime().hasGeneratedAudio(project.id(1)));
    EXPECT_EQ(project->selection().singleSelectedLineId(), project.id(0));
    expectSound(*project);
    project->undoManager().undo();
    EXPECT_EQ(project->project().lines.size(), 3);
}

} // namespace orlenta::controller
