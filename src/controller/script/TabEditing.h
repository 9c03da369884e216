#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// Operations on tabs. Each is one undo step, unless it says otherwise, and does nothing where its precondition fails.
/// Main thread.
class TabEditing final {
public:
    explicit TabEditing(ProjectController &controller) : m_controller(controller) {}

    /// The last tab can't be closed.
    [[nodiscard]] bool canCloseTab() const;

    /// Shows the tab; no undo step, yet the project is dirty afterwards.
    void setActiveTab(const model::TabId &id);
    void selectNextTab();
    void selectPreviousTab();
    /// Adds a tab with one empty line at the end and shows it.
    void addTab();
    void closeTab(const model::TabId &id);
    /// Moves the tab so that it stands before the tab that is at `destination` now.
    void moveTab(const model::TabId &id, qsizetype destination);
    void renameTab(const model::TabId &id, const QString &name);
    /// Copies the tab and its lines; the copies name the same audio files.
    void duplicateTab(const model::TabId &id);

private:
    void step(qsizetype distance);

    ProjectController &m_controller;
};

} // namespace orlenta::controller
