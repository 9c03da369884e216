#pragma once

#include <functional>
#include <vector>

#include <QtCore/QObject>

#include "model/ProjectStoreError.h"
#include "shell/application/AppContext.h"
#include "shell/windows/ProjectWindowController.h"

class QWidget;

namespace orlenta::shell {

/// The open project windows in the order they were opened. Main thread; the context outlives it.
class ProjectWindows final : public QObject {
    Q_OBJECT
public:
    explicit ProjectWindows(AppContext &context, QObject *parent = nullptr);
    ~ProjectWindows() override;

    [[nodiscard]] std::vector<ProjectWindowController *> open() const;
    [[nodiscard]] bool isEmpty() const { return m_open.empty(); }
    [[nodiscard]] ProjectWindowController *activeWindowController(const QWidget *window) const;

    /// Opens the project at this path, or brings its window to the front if it is already open. Shows an alert on
    /// failure. True if the project now has a window.
    bool openProject(const QString &path);
    /// Creates a project folder and opens it. Shows an alert on failure.
    bool createAndOpenProject(const QString &folder, const QString &name);
    void bringProjectWindowsForward();

    /// Stops recordings, then asks about each unsaved project in turn. The completion says whether the application may
    /// quit. If a window shows another sheet, cancels immediately.
    using QuitCompletion = std::function<void(ProjectWindowController::CloseOutcome)>;
    void resolveUnsavedProjects(const QuitCompletion &completion);

Q_SIGNALS:
    void projectOpened();
    /// The last window has closed.
    void allClosed();
    /// A project couldn't be opened or created; its alert is on screen.
    void openFailed();

private:
    [[nodiscard]] ProjectWindowController *findByFolder(const QString &folder) const;
    void show(const model::StoredProject &stored);
    void report(const model::ProjectStoreError &error);
    void forget(ProjectWindowController *closed);
    /// Stops the recordings of all windows and calls `settled` once no work is pending. Returns false if none was.
    bool settleAll(const std::function<void()> &settled);
    void resolveNext(std::vector<ProjectWindowController *> waiting, const QuitCompletion &completion);

    AppContext &m_context;
    std::vector<std::unique_ptr<ProjectWindowController>> m_open;
};

} // namespace orlenta::shell
