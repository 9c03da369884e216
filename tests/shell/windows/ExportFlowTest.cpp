#include "shell/windows/ExportFlow.h"

#include <memory>

#include <gtest/gtest.h>
#include <qcoro/qcorotask.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QAction>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>

#include "base/files/PendingFile.h"
#include "base/files/PrivateFolders.h"
#include "controller/document/Notices.h"
#include "controller/script/Selection.h"
#include "controller/takes/TakeEditing.h"
#include "shell/editor/NoticeBar.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/menus/ProjectActions.h"
#include "shell/ShellSession.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/ProjectWindows.h"
#include "support/TestTone.h"

namespace orlenta {
namespace {

using controller::MultiLineOutput;
using shell::ProjectWindow;
using shell::ProjectWindowController;
using testing::buttonNamed;
using testing::ShellSession;
using testing::waitUntil;

class ExportFlowTest : public ::testing::Test {
protected:
    ~ExportFlowTest() override {
        for (const auto &project : windows.open())
            project->controller().discardChanges();
    }
    /// Opens a window for a project with two selected lines that have takes.
    ProjectWindowController &open(const QString &name) {
        const model::StoredProject stored = session.makeProject(name, {QStringLiteral("One."), QStringLiteral("Two.")});
        EXPECT_TRUE(windows.openProject(stored.folder));
        ProjectWindowController &project = *windows.open().back();
        controller::ProjectController &document = project.controller();
        for (const model::LineId &id : document.scriptLineIds()) {
            const QString tone = session.path(QStringLiteral("tone.wav"));
            EXPECT_FALSE(testing::writeTone(tone, 0.1).isEmpty());
            QCoro::waitFor(document.takes().installGeneratedAudio(tone, id, {}));
        }
        document.selection().selectAll();
        return project;
    }
    static QFileDialog *dialogOf(const ProjectWindowController &project) {
        auto *dialog = project.window().findChild<QFileDialog *>();
        return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
    }
    static QFileDialog *ask(const ProjectWindowController &project, MultiLineOutput output) {
        project.window().exportFlow().exportSelectedAudio(output);
        EXPECT_TRUE(waitUntil([&] { return dialogOf(project) != nullptr; }));
        return dialogOf(project);
    }
    static void choose(QFileDialog *dialog, const QString &path) {
        dialog->findChild<QLineEdit *>()->setText(path);
        QMetaObject::invokeMethod(dialog, "accept");
    }
    static bool waitForEnd(const ProjectWindowController &project) {
        return waitUntil([&] { return !project.window().exportFlow().isBusy(); });
    }
    /// The existing joined files. The folder is private to this test run.
    static QStringList joinedFiles() {
        return QDir(base::PrivateFolders::temporary() + QStringLiteral("/OrlentaStitchedAudio")).entryList(QDir::Files);
    }

    ShellSession session;
    shell::ProjectWindows windows{session.context};
};

TEST_F(ExportFlowTest, TwoWindowsCanExportAtTheSameTime) {
    ProjectWindowController &first = open(QStringLiteral("First"));
    ProjectWindowController &second = open(QStringLiteral("Second"));
    QFileDialog *asked = ask(first, MultiLineOutput::Continuous);
    QFileDialog *askedNext = ask(second, MultiLineOutput::Continuous);
    for (const auto &[project, dialog] : {std::pair(&first, asked), std::pair(&second, askedNext)}) {
        const QString path = session.path(project->controller().project().projectName + QStringLiteral(".wav"));
        choose(dialog, path);
        ASSERT_TRUE(waitForEnd(*project));
        EXPECT_EQ(project->controller().spotError(), QString());
        EXPECT_GT(QFileInfo(path).size(), 44);
    }
}

TEST_F(ExportFlowTest, TheJoinedFileIsDeletedAfterTheExport) {
    const QStringList before = joinedFiles();
    ProjectWindowController &project = open(QStringLiteral("Gone"));
    QFileDialog *dialog = ask(project, MultiLineOutput::Continuous);
    EXPECT_EQ(joinedFiles().size(), before.size() + 1);
    dialog->reject();
    EXPECT_TRUE(waitUntil([&] { return joinedFiles() == before; }));
    EXPECT_FALSE(project.window().exportFlow().isBusy());

    choose(ask(project, MultiLineOutput::Continuous), session.path(QStringLiteral("out.wav")));
    ASSERT_TRUE(waitForEnd(project));
    EXPECT_TRUE(waitUntil([&] { return joinedFiles() == before; }));
    EXPECT_TRUE(QFile::exists(session.path(QStringLiteral("out.wav"))));

    ask(project, MultiLineOutput::Continuous);
    project.controller().discardChanges();
    EXPECT_TRUE(project.window().close());
    EXPECT_TRUE(waitUntil([&] { return joinedFiles() == before; }));
}

TEST_F(ExportFlowTest, TheWindowShowsARunningExportAndRefusesAnother) {
    ProjectWindowController &project = open(QStringLiteral("Busy"));
    controller::ProjectController &document = project.controller();
    const QString target = session.path(QStringLiteral("clips"));
    ASSERT_TRUE(QDir().mkpath(target));
    // While this file is pending, anyone who wants to replace it waits.
    const QString clip = document.takes().clipName(*document.project().linesInOrder().front()) + QStringLiteral(".wav");
    auto held = std::make_unique<base::Result<base::PendingFile, base::FileError>>(
        base::PendingFile::create(target + u'/' + clip));
    ASSERT_TRUE(*held);
    const auto shows = [&project](const QString &text) {
        for (const QLabel *label : project.window().findChildren<QLabel *>())
            if (label->isVisible() && label->text() == text)
                return true;
        return false;
    };
    const QString busy = QStringLiteral("Exporting audio…");
    QAction *command = project.window().actions()[controller::CommandId::ExportAudio];

    choose(ask(project, MultiLineOutput::Individual), target);
    EXPECT_TRUE(waitUntil([&] { return dialogOf(project) == nullptr && shows(busy); }));
    EXPECT_FALSE(command->isEnabled());
    project.window().exportFlow().exportSelectedAudio(MultiLineOutput::Individual);
    EXPECT_EQ(dialogOf(project), nullptr);
    held.reset();
    ASSERT_TRUE(waitForEnd(project));
    EXPECT_FALSE(shows(busy));
    EXPECT_TRUE(command->isEnabled());
    EXPECT_EQ(QDir(target).entryList(QDir::Files).size(), 2);
    EXPECT_EQ(document.spotError(), QString());
}

TEST_F(ExportFlowTest, AFinishedExportSaysWhereItIsAndTheNextOneStartsThere) {
    ProjectWindowController &project = open(QStringLiteral("Handed"));
    const QString folder = session.path(QStringLiteral("for the mix"));
    ASSERT_TRUE(QDir().mkpath(folder));
    const auto notice = [&project] {
        const auto current = project.controller().notices().current();
        return current ? current->text : QString();
    };
    choose(ask(project, MultiLineOutput::Continuous), folder + QStringLiteral("/scene.wav"));
    ASSERT_TRUE(waitForEnd(project));
    EXPECT_EQ(notice(), QStringLiteral("Exported \"scene.wav\" to %1").arg(folder));
    const testing::FileManager files;
    buttonNamed(*project.window().editor().findChild<shell::NoticeBar *>(), QStringLiteral("Show in Folder"))->click();
    EXPECT_EQ(files.shown, QList<QUrl>{QUrl::fromLocalFile(folder)});

    ProjectWindowController &other = open(QStringLiteral("Other"));
    EXPECT_EQ(ask(other, MultiLineOutput::Continuous)->directory().path(), folder);
    dialogOf(other)->reject();
    QFileDialog *dialog = ask(project, MultiLineOutput::Individual);
    EXPECT_EQ(dialog->directory().path(), folder);
    choose(dialog, session.path(QString()));
    ASSERT_TRUE(waitForEnd(project));
    EXPECT_TRUE(notice().startsWith(QStringLiteral("Exported 2 clips to "))) << notice().toStdString();
    EXPECT_EQ(ask(project, MultiLineOutput::Continuous)->directory(), QDir(session.path(QString())));
    dialogOf(project)->reject();

    // A failure doesn't leave the old success standing.
    choose(ask(project, MultiLineOutput::Continuous), QStringLiteral("/proc/scene.wav"));
    ASSERT_TRUE(waitForEnd(project));
    EXPECT_TRUE(notice().startsWith(QStringLiteral("Export failed: "))) << notice().toStdString();
    project.controller().setSpotError({});
    EXPECT_EQ(notice(), QString());
}

} // namespace
} // namespace orlenta
