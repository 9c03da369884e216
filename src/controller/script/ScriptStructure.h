#pragma once

#include <vector>

#include "controller/document/Edit.h"

namespace orlenta::controller {

/// Changes of tabs and of which lines there are, with the effects that each always has on the selection. Lines that
/// leave their tab leave the project, with what they have at run time.
class ScriptStructure final {
public:
    ScriptStructure() = delete;

    /// Puts new lines before the line at `index` of the tab.
    static void insertLines(const Edit &edit, const model::TabId &tab, qsizetype index,
                            const std::vector<model::ProjectLine> &lines);
    /// Takes lines out of their tab.
    static void removeLines(const Edit &edit, const model::TabId &tab, const QSet<model::LineId> &lines);
    /// Puts a line elsewhere in its tab; `to` is its index in the list without it.
    static void moveLine(const Edit &edit, const model::TabId &tab, qsizetype from, qsizetype to);

    /// Puts a tab and its lines before the tab at `index`. The tab's own list of ids gets those of the lines.
    static void insertTab(const Edit &edit, qsizetype index, const model::ProjectTab &tab,
                          const std::vector<model::ProjectLine> &lines);
    /// Removes a tab and its lines; the tab that takes its place becomes active if it was.
    static void removeTab(const Edit &edit, qsizetype index);
    static void moveTab(const Edit &edit, qsizetype from, qsizetype to);
    /// Shows another tab and ends the editing of a line.
    static void setActiveTab(const Edit &edit, const model::TabId &id);
    /// Makes the first tab active where the active one has gone.
    static void dropUnknownActiveTab(const Edit &edit);

private:
    [[nodiscard]] static model::ProjectTab *findTab(const Edit &edit, const model::TabId &id);
    static void normaliseSelection(const Edit &edit);
};

} // namespace orlenta::controller
