#include "shell/windows/ProjectWindows.h"

#include <algorithm>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include "base/LogCategories.h"
#include "shell/controls/MessageBox.h"
#include "shell/windows/ProjectWindow.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QString standardFolder(const QString &path) {
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QDir::cleanPath(QDir(path).absolutePath()) : canonical;
}

} // namespace

ProjectWindows::ProjectWindows(AppContext &context, QObject *parent) : QObject(parent), m_context(context) {}

ProjectWindows::~ProjectWindows() = default;

std::vector<ProjectWindowController *> ProjectWindows::open() const {
    std::vector<ProjectWindowController *> windows;
    for (const auto &window : m_open)
        windows.push_back(window.get());
    return windows;
}

ProjectWindowController *ProjectWindows::activeWindowController(const QWidget *window) const {
    for (const auto &open : m_open) {
        if (&open->window() == window)
            return open.get();
    }
    return nullptr;
}

ProjectWindowController *ProjectWindows::findByFolder(const QString &folder) const {
    for (const auto &open : m_open) {
        if (standardFolder(open->folder()) == standardFolder(folder))
            return open.get();
    }
    return nullptr;
}

bool ProjectWindows::openProject(const QString &path) {
    qCInfo(base::log::project) << "Project window opening from ProjectWindowController.openProject";
    const auto folder = model::ProjectStore::projectFolderForLocation(path);
    if (ProjectWindowController *open = folder ? findByFolder(*folder) : nullptr; open != nullptr) {
        qCInfo(base::log::project).noquote()
            << "[ProjectWindowController] Project already open, focusing existing window:" << path;
        qCInfo(base::log::project).noquote().nospace()
            << "ProjectWindowController.openProject deduped existing project folder=" << open->folder();
        open->showProjectWindow();
        return true;
    }
    qCInfo(base::log::project).noquote() << "[ProjectWindowController] Loading project store from:" << path;
    const auto loaded = model::ProjectStore::load(path, base::wholeSeconds(base::systemClock()));
    if (!loaded) {
        report(loaded.error());
        return false;
    }
    qCInfo(base::log::project).noquote().nospace()
        << "[ProjectWindowController] Loaded project '" << loaded->project.projectName
        << "' from folder: " << loaded->folder;
    show(loaded.value());
    return true;
}

bool ProjectWindows::createAndOpenProject(const QString &folder, const QString &name) {
    qCInfo(base::log::project) << "Project window opening from ProjectWindowController.createAndOpenProject";
    const base::Timestamp now = base::wholeSeconds(base::systemClock());
    const auto created = model::ProjectStore::create(folder, name, model::Project::makeNew(name, now), now);
    if (!created) {
        report(created.error());
        return false;
    }
    show(created.value());
    return true;
}

void ProjectWindows::bringProjectWindowsForward() {
    for (const auto &open : m_open)
        open->showProjectWindow();
}

void ProjectWindows::show(const model::StoredProject &stored) {
    auto opened = std::make_unique<ProjectWindowController>(m_context, stored);
    ProjectWindowController *window = opened.get();
    m_open.push_back(std::move(opened));
    connect(window, &ProjectWindowController::closed, this, [this, window] { forget(window); });
    qCInfo(base::log::project).noquote() << "[ProjectWindowController] Created ProjectController for project id:"
                                         << stored.project.projectId.text();
    window->showProjectWindow();
    Q_EMIT projectOpened();
}

void ProjectWindows::report(const model::ProjectStoreError &error) {
    qCWarning(base::log::project).noquote() << "[ProjectStore] Open failed:" << error.description();
    auto *box = new MessageBox(QMessageBox::Warning, QApplication::activeWindow());
    box->setMessage(error.description(), error.failureReason().value_or(QString()));
    box->addButton(QMessageBox::Ok)->setToolTip(u"Dismiss this message"_s);
    box->open();
    Q_EMIT openFailed();
}

void ProjectWindows::forget(ProjectWindowController *closed) {
    const auto found =
        std::find_if(m_open.begin(), m_open.end(), [closed](const auto &open) { return open.get() == closed; });
    if (found == m_open.end())
        return;
    // The window is still handling its close event; delete it afterwards.
    found->release()->deleteLater();
    m_open.erase(found);
    if (m_open.empty())
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (m_open.empty())
                    Q_EMIT allClosed();
            },
            Qt::QueuedConnection);
}

bool ProjectWindows::settleAll(const std::function<void()> &settled) {
    const auto waitedFor = std::make_shared<qsizetype>(0);
    for (const auto &window : m_open) {
        if (window->session().isSettled())
            continue;
        ++*waitedFor;
        window->session().settle([waitedFor, settled] {
            if (--*waitedFor == 0)
                settled();
        });
    }
    return *waitedFor > 0;
}

void ProjectWindows::resolveUnsavedProjects(const QuitCompletion &completion) {
    if (settleAll([this, completion] { resolveUnsavedProjects(completion); }))
        return;
    std::vector<ProjectWindowController *> unsaved = open();
    std::erase_if(unsaved, [](ProjectWindowController *window) { return !window->controller().hasUnsavedChanges(); });
    resolveNext(std::move(unsaved), completion);
}

void ProjectWindows::resolveNext(std::vector<ProjectWindowController *> waiting, const QuitCompletion &completion) {
    using Outcome = ProjectWindowController::CloseOutcome;
    const auto stillOpen = open();
    while (!waiting.empty()) {
        ProjectWindowController *window = waiting.front();
        waiting.erase(waiting.begin());
        const bool isOpen = std::find(stillOpen.begin(), stillOpen.end(), window) != stillOpen.end();
        if (!isOpen || !window->controller().hasUnsavedChanges())
            continue;
        const auto dialogs = window->window().findChildren<QDialog *>();
        const bool showsSheet =
            std::any_of(dialogs.begin(), dialogs.end(), [](const QDialog *dialog) { return dialog->isVisible(); });
        if (window->closeConfirmationPresented() || showsSheet) {
            completion(Outcome::Cancelled);
            return;
        }
        window->showProjectWindow();
        window->presentCloseConfirmation([this, waiting, completion](Outcome outcome) {
            if (outcome == Outcome::Proceed)
                resolveNext(waiting, completion);
            else
                completion(Outcome::Cancelled);
        });
        return;
    }
    // While the dialogs were open, something may have been recorded, generated or edited.
    const bool isAllDone = std::all_of(m_open.begin(), m_open.end(), [](const auto &window) {
        return window->session().isSettled() && !window->controller().hasUnsavedChanges();
    });
    if (isAllDone)
        completion(Outcome::Proceed);
    else
        resolveUnsavedProjects(completion);
}

} // namespace orlenta::shell
