#include "controller/document/TypingSession.h"

#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>

#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

class TypingSessionTest : public ::testing::Test {
protected:
    ScriptProject project{{{QStringLiteral("start"), QStringLiteral("other")}}};
    TypingSession &typing = project->typing();
    UndoManager &undo = project->undoManager();

    void typeWord(const QString &word) {
        for (const QChar key : word)
            typing.type(project.id(0), project.line(0).text + key);
    }
};

} // namespace

TEST_F(TypingSessionTest, ManyKeysAreOneStepBackToWhereEditingBegan) {
    typing.beginEditing(project.id(0));
    typeWord(QStringLiteral(" three more words"));
    EXPECT_TRUE(project->hasUnsavedChanges());
    typing.commit();
    const int version = project->state().typingFlushVersion;
    undo.undo();
    EXPECT_EQ(project.line(0).text, QStringLiteral("start"));
    EXPECT_GT(project->state().typingFlushVersion, version);
    EXPECT_FALSE(undo.canUndo());
    undo.redo();
    EXPECT_EQ(project.line(0).text, QStringLiteral("start three more words"));
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Typing"));
}

TEST_F(TypingSessionTest, AStructuralOperationCommitsFirstSoThatEachIsAStepOfItsOwn) {
    typing.beginEditing(project.id(0));
    typeWord(QStringLiteral("!"));
    project->lines().addLine();
    undo.undo();
    EXPECT_EQ(project.texts(), (QStringList{QStringLiteral("start!"), QStringLiteral("other")}));
    undo.undo();
    EXPECT_EQ(project.line(0).text, QStringLiteral("start"));
    undo.redo();
    undo.redo();
    EXPECT_EQ(project.texts(), (QStringList{QStringLiteral("start!"), QStringLiteral("other"), QString()}));
}

TEST_F(TypingSessionTest, TypingAfterAnUndoStartsFromTheRestoredText) {
    typing.beginEditing(project.id(0));
    typeWord(QStringLiteral("X"));
    typing.commit();
    undo.undo();
    typeWord(QStringLiteral("Y"));
    typing.commit();
    EXPECT_FALSE(undo.canRedo());
    undo.undo();
    EXPECT_EQ(project.line(0).text, QStringLiteral("start"));
    EXPECT_FALSE(undo.canUndo());
}

TEST_F(TypingSessionTest, TextThatReturnsToItsBaselineIsNoStep) {
    typing.beginEditing(project.id(0));
    typing.type(project.id(0), QStringLiteral("other text"));
    typing.type(project.id(0), QStringLiteral("start"));
    const int version = project->state().typingFlushVersion;
    typing.commit();
    EXPECT_FALSE(undo.canUndo());
    EXPECT_EQ(project->state().typingFlushVersion, version);
}

} // namespace orlenta::controller
