#include "controller/document/ProjectState.h"

#include <algorithm>

namespace orlenta::controller {

const model::ProjectTab *ProjectState::activeTab() const {
    return project.activeTabId ? project.findTab(*project.activeTabId) : nullptr;
}

const model::LineIdList &ProjectState::scriptLineIds() const {
    static const model::LineIdList none;
    const model::ProjectTab *tab = activeTab();
    return tab != nullptr ? tab->lineIds : none;
}

qsizetype ProjectState::tabIndex(const model::TabId &id) const {
    const auto found =
        std::find_if(project.tabs.begin(), project.tabs.end(), [&](const auto &tab) { return tab.id == id; });
    return found == project.tabs.end() ? -1 : found - project.tabs.begin();
}

std::optional<model::LineId> ProjectState::singleSelectedLineId() const {
    const QSet<model::LineId> &selected = selection.selectedLineIds;
    return selected.size() == 1 ? std::optional(*selected.begin()) : std::nullopt;
}

QList<model::LineId> ProjectState::selectedLinesInScript() const {
    if (const auto single = singleSelectedLineId())
        return scriptLineIds().contains(*single) ? QList{*single} : QList<model::LineId>();
    QList<model::LineId> found;
    if (selection.selectedLineIds.isEmpty())
        return found;
    for (const model::LineId &id : scriptLineIds())
        if (selection.selectedLineIds.contains(id))
            found.append(id);
    return found;
}

} // namespace orlenta::controller
