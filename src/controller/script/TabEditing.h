#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// Operations on tabs. Unless noted, each is one undo step, and does nothing if its precondition fails. Main thread.
class TabEditing final {
public:
    explicit TabEditing(ProjectController &controller) : m_controller(controller) {}

    /// False for the last tab.
    [[nodiscard]] bool canCloseTab() const;

    /// Shows the tab. Not undoable, but makes the project dirty.
    void setActiveTab(const model::TabId &id);
    void selectNextTab();
    void selectPreviousTab();
    /// Adds a tab with one empty line at the end, and shows it.
    void addTab();
    void closeTab(const model::TabId &id);
    /// Moves the tab to before the tab currently at `destination`.
    void moveTab(const model::TabId &id, qsizetype destination);
    void renameTab(const model::TabId &id, const QString &name);
    /// Copies the tab and its lines. The audio files are shared.
    void duplicateTab(const model::TabId &id);

private:
    void step(qsizetype distance);

    ProjectController &m_controller;
};

} // namespace orlenta::controller
