#include "shell/windows/ProjectWindow.h"

#include <gtest/gtest.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QPointer>
#include <QtGui/QAction>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QMessageBox>

#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/script/TabEditing.h"
#include "controller/takes/LineRuntime.h"
#include "shell/editor/list/ScriptListView.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/editor/ScriptToolbar.h"
#include "shell/menus/ProjectActions.h"
#include "shell/ShellSession.h"
#include "shell/windows/ErrorAlerts.h"
#include "shell/windows/ProjectToolbar.h"
#include "shell/windows/ProjectWindows.h"

namespace orlenta {
namespace {

using shell::ProjectWindow;
using shell::ProjectWindowController;
using shell::ProjectWindows;
using testing::buttonNamed;
using testing::ShellSession;
using testing::waitUntil;

/// A session with open projects.
struct OpenProjects {
    explicit OpenProjects(const QString &localVoices = QStringLiteral(ORLENTA_LOCAL_VOICES))
        : session(localVoices), windows(session.context) {}

    ProjectWindowController &open(const QString &name, const QStringList &lines) {
        const model::StoredProject stored = session.makeProject(name, lines);
        EXPECT_TRUE(windows.openProject(stored.folder));
        return *windows.open().back();
    }
    static void edit(ProjectWindowController &project) { project.controller().lines().addLine(); }
    [[nodiscard]] static qsizetype linesOnDisk(const QString &folder) {
        const auto loaded = model::ProjectStore::load(folder, {});
        return loaded ? loaded->project.lines.size() : -1;
    }

    ShellSession session;
    ProjectWindows windows;
};

QMessageBox *sheetOf(const ProjectWindowController &project) {
    const auto boxes = project.window().findChildren<QMessageBox *>();
    for (QMessageBox *box : boxes) {
        if (box->isVisible())
            return box;
    }
    return nullptr;
}

void answer(const ProjectWindowController &project, const QString &button) {
    QMessageBox *box = sheetOf(project);
    ASSERT_NE(box, nullptr);
    QAbstractButton *choice = buttonNamed(*box, button);
    ASSERT_NE(choice, nullptr);
    choice->click();
}

TEST(ProjectWindow, OffersLocalVoicesWithoutAnAccount) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("First"), {QStringLiteral("Hello.")});
    QAbstractButton *offer = nullptr;
    ASSERT_TRUE(waitUntil([&] {
        offer = buttonNamed(project.window(), QStringLiteral("Use local voices"));
        return offer != nullptr;
    }));
    offer->click();
    EXPECT_TRUE(waitUntil([&] { return it.session.localVoices.state() == speech::LocalVoices::State::On; }));
    EXPECT_TRUE(waitUntil([&] { return !offer->isVisible(); }));
}

TEST(ProjectWindow, LocalVoicesThatEndAreReportedBesideTheWorkAndCanBeStartedAgain) {
    OpenProjects it(QStringLiteral("/nowhere/missing-program"));
    ProjectWindowController &project = it.open(QStringLiteral("First"), {QStringLiteral("Hello.")});
    const auto offer = [&] { return buttonNamed(project.window(), QStringLiteral("Start Again")); };
    EXPECT_EQ(offer(), nullptr);
    it.session.localVoices.switchOn();
    ASSERT_TRUE(waitUntil([&] { return offer() != nullptr; }));
    EXPECT_EQ(sheetOf(project), nullptr);
    offer()->click();
    EXPECT_EQ(offer(), nullptr);
    EXPECT_TRUE(waitUntil([&] { return offer() != nullptr; }));
}

TEST(ProjectWindow, TheViewMenuShowsWhetherTheRowsOfTheTabAreCompact) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("First"), {QStringLiteral("Hello.")});
    QAction *compact = project.window().actions()[controller::CommandId::CompactRows];
    const int tall = project.window().editor().list().rows().constFirst()->height();
    compact->trigger();
    EXPECT_TRUE(compact->isChecked());
    EXPECT_LT(project.window().editor().list().rows().constFirst()->height(), tall);
    project.controller().tabs().addTab();
    EXPECT_FALSE(compact->isChecked());
    project.controller().tabs().selectPreviousTab();
    EXPECT_TRUE(compact->isChecked());
    project.controller().discardChanges();
}

TEST(ProjectWindow, ClosesACleanProjectWithoutAsking) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("Clean"), {QStringLiteral("Hello.")});
    EXPECT_EQ(project.window().size(), QSize(1000, 700));
    QSignalSpy allClosed(&it.windows, &ProjectWindows::allClosed);
    EXPECT_TRUE(project.window().close());
    EXPECT_TRUE(it.windows.isEmpty());
    EXPECT_TRUE(waitUntil([&] { return allClosed.count() == 1; }));
}

TEST(ProjectWindow, AsksOnceBeforeClosingAnEditedProject) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("Edited"), {QStringLiteral("Hello.")});
    OpenProjects::edit(project);
    EXPECT_TRUE(project.window().isWindowModified());
    EXPECT_FALSE(project.window().close());
    EXPECT_FALSE(project.window().close());
    QMessageBox *box = sheetOf(project);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), QStringLiteral("Save changes to \"Edited\" before closing?"));
    EXPECT_EQ(box->informativeText(), QStringLiteral("Your changes will be lost if you don't save them."));
    EXPECT_EQ(project.window().findChildren<QMessageBox *>().size(), 1);
    answer(project, QStringLiteral("Cancel"));
    EXPECT_FALSE(it.windows.isEmpty());
    EXPECT_FALSE(project.closeConfirmationPresented());
    EXPECT_TRUE(project.controller().hasUnsavedChanges());
}

TEST(ProjectWindow, SavesOrDiscardsTheChangesAndCloses) {
    OpenProjects it;
    ProjectWindowController &saved = it.open(QStringLiteral("Saved"), {QStringLiteral("Hello.")});
    ProjectWindowController &dropped = it.open(QStringLiteral("Dropped"), {QStringLiteral("Hello.")});
    OpenProjects::edit(saved);
    OpenProjects::edit(dropped);
    EXPECT_FALSE(saved.window().close());
    answer(saved, QStringLiteral("Save"));
    EXPECT_FALSE(dropped.window().close());
    answer(dropped, QStringLiteral("Don't Save"));
    EXPECT_TRUE(it.windows.isEmpty());
    EXPECT_EQ(OpenProjects::linesOnDisk(it.session.path(QStringLiteral("Saved"))), 2);
    EXPECT_EQ(OpenProjects::linesOnDisk(it.session.path(QStringLiteral("Dropped"))), 1);
}

TEST(ProjectWindow, SavingClearsTheEditedMark) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("Marked"), {QStringLiteral("Hello.")});
    OpenProjects::edit(project);
    EXPECT_TRUE(project.window().isWindowModified());
    project.window().actions()[controller::CommandId::SaveProject]->trigger();
    EXPECT_FALSE(project.window().isWindowModified());
    EXPECT_EQ(OpenProjects::linesOnDisk(project.folder()), 2);
}

TEST(ProjectWindow, AFailedSaveShowsAnAlertAndKeepsTheWindowOpen) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("Lost"), {QStringLiteral("Hello.")});
    OpenProjects::edit(project);
    ASSERT_TRUE(QDir(project.folder()).removeRecursively());
    EXPECT_FALSE(project.window().close());
    answer(project, QStringLiteral("Save"));
    EXPECT_FALSE(it.windows.isEmpty());
    EXPECT_TRUE(project.controller().hasUnsavedChanges());
    ASSERT_NE(project.window().alerts().box(), nullptr);
    EXPECT_FALSE(project.window().alerts().box()->text().isEmpty());
    // Further failures update the same alert.
    project.window().actions()[controller::CommandId::SaveProject]->trigger();
    project.window().actions()[controller::CommandId::SaveProject]->trigger();
    project.window().alerts().box()->accept();
    EXPECT_EQ(project.window().alerts().box(), nullptr);
    project.controller().discardChanges();
}

TEST(ProjectWindow, AProjectOpenedTwiceHasOneWindow) {
    OpenProjects it;
    ProjectWindowController &project = it.open(QStringLiteral("Once"), {QStringLiteral("Hello.")});
    const QString file = model::ProjectStore::projectFileForWriting(project.folder(), QStringLiteral("Once"));
    EXPECT_TRUE(it.windows.openProject(file));
    EXPECT_TRUE(it.windows.openProject(project.folder() + QStringLiteral("/../Once")));
    EXPECT_EQ(it.windows.open().size(), 1U);
}

TEST(ProjectWindow, AnInvalidProjectFileShowsWhyAndOpensNoWindow) {
    OpenProjects it;
    const auto write = [&it](const QString &name, const QByteArray &bytes) {
        QFile file(it.session.path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    };
    struct Case {
        QString path;
        QString text;
        QString reason;
    };
    const QList<Case> cases{{write(QStringLiteral("note.txt"), "hello"),
                             QStringLiteral("This doesn't appear to be a Orlenta project."),
                             {}},
                            {write(QStringLiteral("new.orl"), R"({"schema_version": 2})"),
                             QStringLiteral("This project was created with a newer version of Orlenta."),
                             QStringLiteral("Project schema version 2 is newer than this app supports.")}};
    for (const Case &refused : cases) {
        QSignalSpy failed(&it.windows, &ProjectWindows::openFailed);
        EXPECT_FALSE(it.windows.openProject(refused.path));
        EXPECT_EQ(failed.count(), 1);
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), refused.text);
        EXPECT_EQ(box->informativeText(), refused.reason);
        box->accept();
    }
    EXPECT_TRUE(it.windows.isEmpty());
}

TEST(ProjectWindow, QuittingAsksAboutEachProjectAndCancelKeepsThemOpen) {
    OpenProjects it;
    ProjectWindowController &first = it.open(QStringLiteral("First"), {QStringLiteral("Hello.")});
    ProjectWindowController &second = it.open(QStringLiteral("Second"), {QStringLiteral("Hello.")});
    OpenProjects::edit(first);
    OpenProjects::edit(second);
    QList<ProjectWindowController::CloseOutcome> outcomes;
    const auto note = [&outcomes](ProjectWindowController::CloseOutcome outcome) { outcomes.append(outcome); };
    it.windows.resolveUnsavedProjects(note);
    EXPECT_EQ(sheetOf(second), nullptr);
    answer(first, QStringLiteral("Save"));
    answer(second, QStringLiteral("Cancel"));
    ASSERT_EQ(outcomes.size(), 1);
    EXPECT_EQ(outcomes.takeFirst(), ProjectWindowController::CloseOutcome::Cancelled);
    EXPECT_EQ(it.windows.open().size(), 2U);
    EXPECT_FALSE(first.controller().hasUnsavedChanges());

    EXPECT_FALSE(second.window().close());
    it.windows.resolveUnsavedProjects(note);
    ASSERT_EQ(outcomes.size(), 1);
    EXPECT_EQ(outcomes.takeFirst(), ProjectWindowController::CloseOutcome::Cancelled);
    answer(second, QStringLiteral("Cancel"));
    it.windows.resolveUnsavedProjects(note);
    answer(second, QStringLiteral("Don't Save"));
    ASSERT_EQ(outcomes.size(), 1);
    EXPECT_EQ(outcomes.first(), ProjectWindowController::CloseOutcome::Proceed);
}

TEST(ProjectWindow, QuittingAsksAboutProjectsEditedMeanwhile) {
    OpenProjects it;
    ProjectWindowController &first = it.open(QStringLiteral("First"), {QStringLiteral("Hello.")});
    ProjectWindowController &second = it.open(QStringLiteral("Second"), {QStringLiteral("Hello.")});
    OpenProjects::edit(first);
    QList<ProjectWindowController::CloseOutcome> outcomes;
    it.windows.resolveUnsavedProjects(
        [&outcomes](ProjectWindowController::CloseOutcome outcome) { outcomes.append(outcome); });
    OpenProjects::edit(second);
    answer(first, QStringLiteral("Save"));
    EXPECT_TRUE(outcomes.isEmpty());
    answer(second, QStringLiteral("Save"));
    EXPECT_EQ(outcomes, QList{ProjectWindowController::CloseOutcome::Proceed});
    EXPECT_FALSE(second.controller().hasUnsavedChanges());
}

TEST(ProjectWindow, GeneratingALineAddsATakeThatCanBeUndoneAndRedone) {
    OpenProjects it;
    ASSERT_TRUE(it.session.startLocalVoices());
    ProjectWindowController &project = it.open(QStringLiteral("Spoken"), {QStringLiteral("Clara: Good morning.")});
    ASSERT_TRUE(waitUntil([&] { return project.elevenLabsService().isAuthenticated(); }));
    QAbstractButton *generate = buttonNamed(project.window().toolbar().script(), QStringLiteral("Generate"));
    ASSERT_NE(generate, nullptr);
    generate->click();
    const auto line = [&project] { return *project.controller().project().linesInOrder().front(); };
    ASSERT_TRUE(waitUntil([&] { return line().takes.size() == 1 || project.session().generator().generateError(); }));
    EXPECT_FALSE(project.session().generator().generateError().has_value());
    EXPECT_TRUE(project.controller().runtime().hasGeneratedAudio(line().lineId));
    ASSERT_TRUE(waitUntil([&] { return !project.session().generator().queue().isActive(); }));
    EXPECT_EQ(generate->text(), QStringLiteral("Regenerate"));
    const shell::ProjectActions &actions = project.window().actions();
    EXPECT_EQ(actions[controller::CommandId::Undo]->text(), QStringLiteral("Undo Generate"));
    EXPECT_TRUE(actions[controller::CommandId::ExportAudio]->isEnabled());
    actions[controller::CommandId::Undo]->trigger();
    EXPECT_TRUE(line().takes.isEmpty());
    EXPECT_FALSE(actions[controller::CommandId::ExportAudio]->isEnabled());
    EXPECT_EQ(actions[controller::CommandId::Redo]->text(), QStringLiteral("Redo Generate"));
    actions[controller::CommandId::Redo]->trigger();
    EXPECT_EQ(line().takes.size(), 1);
    project.controller().discardChanges();
}

TEST(ProjectWindow, ClosingWhileGeneratingCancelsTheRest) {
    OpenProjects it;
    ASSERT_TRUE(it.session.startLocalVoices());
    ProjectWindowController &kept = it.open(QStringLiteral("Kept"), {QStringLiteral("Clara: Still here.")});
    ProjectWindowController &closed =
        it.open(QStringLiteral("Left"), {QStringLiteral("Clara: One."), QStringLiteral("Clara: Two.")});
    ASSERT_TRUE(waitUntil(
        [&] { return kept.elevenLabsService().isAuthenticated() && closed.elevenLabsService().isAuthenticated(); }));
    closed.controller().selection().selectAll();
    closed.window().actions()[controller::CommandId::Generate]->trigger();
    ASSERT_TRUE(closed.session().generator().queue().isActive());
    const QPointer<QObject> gone(&closed);
    closed.controller().discardChanges();
    EXPECT_TRUE(closed.window().close());
    EXPECT_TRUE(waitUntil([&] { return gone.isNull(); }));
    // The other window's service still works.
    kept.window().actions()[controller::CommandId::Generate]->trigger();
    EXPECT_TRUE(waitUntil([&] { return kept.controller().project().linesInOrder().at(0)->takes.size() == 1; }));
    kept.controller().discardChanges();
}

TEST(ProjectWindow, CutCopyAndPasteActOnLinesWhenNoTextHasTheFocus) {
    OpenProjects it;
    ProjectWindowController &project =
        it.open(QStringLiteral("Clips"), {QStringLiteral("One."), QStringLiteral("Two.")});
    const shell::ProjectActions &actions = project.window().actions();
    const auto lines = [&project] { return project.controller().scriptLineIds().size(); };
    actions[controller::CommandId::SelectAll]->trigger();
    actions[controller::CommandId::Copy]->trigger();
    actions[controller::CommandId::Paste]->trigger();
    EXPECT_EQ(lines(), 4);
    EXPECT_EQ(actions[controller::CommandId::Undo]->text(), QStringLiteral("Undo Paste Lines"));
    actions[controller::CommandId::Cut]->trigger();
    EXPECT_EQ(lines(), 2);
    EXPECT_EQ(actions[controller::CommandId::Undo]->text(), QStringLiteral("Undo Cut Lines"));
    actions[controller::CommandId::Paste]->trigger();
    EXPECT_EQ(lines(), 4);
    actions[controller::CommandId::DeleteLine]->trigger();
    EXPECT_EQ(lines(), 2);
    EXPECT_EQ(actions[controller::CommandId::Undo]->text(), QStringLiteral("Undo Delete Lines"));
    project.controller().discardChanges();
}

} // namespace
} // namespace orlenta
