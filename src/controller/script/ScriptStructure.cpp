#include "controller/script/ScriptStructure.h"

#include <algorithm>

#include "controller/document/TypingSession.h"
#include "controller/ProjectController.h"
#include "controller/script/Selection.h"

namespace orlenta::controller {

void ScriptStructure::insertLines(const Edit &edit, const model::TabId &tab, qsizetype index,
                                  const std::vector<model::ProjectLine> &lines) {
    model::ProjectTab *target = findTab(edit, tab);
    if (target == nullptr)
        return;
    for (const model::ProjectLine &line : lines) {
        edit->project.lines.insert(line);
        target->lineIds.insert(index++, line.lineId);
    }
    normaliseSelection(edit);
}

void ScriptStructure::removeLines(const Edit &edit, const model::TabId &tab, const QSet<model::LineId> &lines) {
    model::ProjectTab *source = findTab(edit, tab);
    if (source == nullptr)
        return;
    if (lines.size() == 1)
        source->lineIds.removeAt(source->lineIds.indexOf(*lines.begin()));
    else
        source->lineIds.removeIf([&lines](const model::LineId &id) { return lines.contains(id); });
    for (const model::LineId &id : lines) {
        edit->project.lines.remove(id);
        edit->lineRuntime.remove(id);
    }
    normaliseSelection(edit);
}

void ScriptStructure::moveLine(const Edit &edit, const model::TabId &tab, qsizetype from, qsizetype to) {
    if (model::ProjectTab *target = findTab(edit, tab)) {
        target->lineIds.move(from, to);
        normaliseSelection(edit);
    }
}

void ScriptStructure::insertTab(const Edit &edit, qsizetype index, const model::ProjectTab &tab,
                                const std::vector<model::ProjectLine> &lines) {
    model::ProjectTab added = tab;
    for (const model::ProjectLine &line : lines) {
        edit->project.lines.insert(line);
        added.lineIds.append(line.lineId);
    }
    edit->project.tabs.insert(index, added);
    normaliseSelection(edit);
}

void ScriptStructure::removeTab(const Edit &edit, qsizetype index) {
    QList<model::ProjectTab> &tabs = edit->project.tabs;
    const model::ProjectTab removed = tabs.takeAt(index);
    const bool wasActive = edit->project.activeTabId == removed.id;
    dropUnknownActiveTab(edit);
    if (wasActive && !tabs.isEmpty())
        setActiveTab(edit, tabs.at(std::min(index, tabs.size() - 1)).id);
    for (const model::LineId &id : removed.lineIds) {
        edit->project.lines.remove(id);
        edit->lineRuntime.remove(id);
    }
    normaliseSelection(edit);
}

void ScriptStructure::moveTab(const Edit &edit, qsizetype from, qsizetype to) {
    edit->project.tabs.move(from, to);
    normaliseSelection(edit);
}

void ScriptStructure::setActiveTab(const Edit &edit, const model::TabId &id) {
    if (edit->project.activeTabId == id)
        return;
    Selection &selection = edit.controller().selection();
    if (edit->selection.editingLineId) {
        edit.controller().typing().commit();
        edit->selection.editingLineId.reset();
        edit->selection.textSelectionRange.reset();
        selection.normalise(edit, std::nullopt, Selection::AutoSelect::Off);
    }
    edit->project.activeTabId = id;
    selection.reconcile(edit);
}

void ScriptStructure::dropUnknownActiveTab(const Edit &edit) {
    model::Project &project = edit->project;
    if (!project.activeTabId || project.findTab(*project.activeTabId) != nullptr)
        return;
    project.activeTabId = project.tabs.isEmpty() ? std::nullopt : std::optional(project.tabs.first().id);
    edit.controller().selection().reconcile(edit);
}

model::ProjectTab *ScriptStructure::findTab(const Edit &edit, const model::TabId &id) {
    const qsizetype index = edit->tabIndex(id);
    return index < 0 ? nullptr : &edit->project.tabs[index];
}

void ScriptStructure::normaliseSelection(const Edit &edit) {
    edit.controller().selection().normalise(edit, std::nullopt, Selection::AutoSelect::On);
}

} // namespace orlenta::controller
