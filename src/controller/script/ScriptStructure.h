#pragma once

#include <vector>

#include "controller/document/Edit.h"

namespace orlenta::controller {

/// Adds, removes and moves lines and tabs, and updates the selection accordingly. Removed lines also leave the project
/// and lose their runtime state.
class ScriptStructure final {
public:
    ScriptStructure() = delete;

    /// Inserts new lines before the line at `index` of the tab.
    static void insertLines(const Edit &edit, const model::TabId &tab, qsizetype index,
                            const std::vector<model::ProjectLine> &lines);
    /// Removes lines from their tab.
    static void removeLines(const Edit &edit, const model::TabId &tab, const QSet<model::LineId> &lines);
    /// Moves a line within its tab. `to` is the index in the list without it.
    static void moveLine(const Edit &edit, const model::TabId &tab, qsizetype from, qsizetype to);

    /// Inserts a tab and its lines before the tab at `index`. Sets the tab's line ids from the lines.
    static void insertTab(const Edit &edit, qsizetype index, const model::ProjectTab &tab,
                          const std::vector<model::ProjectLine> &lines);
    /// Removes a tab and its lines. If it was active, the tab that takes its place becomes active.
    static void removeTab(const Edit &edit, qsizetype index);
    static void moveTab(const Edit &edit, qsizetype from, qsizetype to);
    /// Activates another tab and ends text editing.
    static void setActiveTab(const Edit &edit, const model::TabId &id);
    /// Activates the first tab if the active one doesn't exist.
    static void dropUnknownActiveTab(const Edit &edit);

private:
    [[nodiscard]] static model::ProjectTab *findTab(const Edit &edit, const model::TabId &id);
    static void normaliseSelection(const Edit &edit);
};

} // namespace orlenta::controller
