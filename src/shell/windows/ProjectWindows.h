#pragma once

#include <functional>
#include <vector>

#include <QtCore/QObject>

#include "model/ProjectStoreError.h"
#include "shell/application/AppContext.h"
#include "shell/windows/ProjectWindowController.h"

class QWidget;

namespace orlenta::shell {

/// The open project windows, in the order of their opening. Main thread; the context outlives it.
class ProjectWindows final : public QObject {
    Q_OBJECT
public:
    explicit ProjectWindows(AppContext &context, QObject *parent = nullptr);
    ~ProjectWindows() override;

    [[nodiscard]] std::vector<ProjectWindowController *> open() const;
    [[nodiscard]] bool isEmpty() const { return m_open.empty(); }
    [[nodiscard]] ProjectWindowController *activeWindowController(const QWidget *window) const;

    /// Opens the project that the path names, or brings its window to the front if it is open. A failure is told in an
    /// alert. True if a window for it is now open.
    bool openProject(const QString &path);
    /// Makes a new project's folder and opens it. A failure is told in an alert.
    bool createAndOpenProject(const QString &folder, const QString &name);
    void bringProjectWindowsForward();

    /// Ends what records, and asks about each unsaved project in turn; the completion tells whether all may go. A
    /// window that shows another sheet cancels at once.
    using QuitCompletion = std::function<void(ProjectWindowController::CloseOutcome)>;
    void resolveUnsavedProjects(const QuitCompletion &completion);

Q_SIGNALS:
    void projectOpened();
    /// The last window has closed.
    void allClosed();
    /// A project could not be opened or created; the alert about it is on screen.
    void openFailed();

private:
    [[nodiscard]] ProjectWindowController *findByFolder(const QString &folder) const;
    void show(const model::StoredProject &stored);
    void report(const model::ProjectStoreError &error);
    void forget(ProjectWindowController *closed);
    /// Ends what records in all windows; `settled` follows when nothing is on its way any more. False when nothing was.
    bool settleAll(const std::function<void()> &settled);
    void resolveNext(std::vector<ProjectWindowController *> waiting, const QuitCompletion &completion);

    AppContext &m_context;
    std::vector<std::unique_ptr<ProjectWindowController>> m_open;
};

} // namespace orlenta::shell
