#include "controller/script/TabEditing.h"

#include <algorithm>

#include "controller/document/Edit.h"
#include "controller/ProjectController.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"

namespace orlenta::controller {

bool TabEditing::canCloseTab() const {
    return m_controller.project().tabs.size() >= 2;
}

void TabEditing::setActiveTab(const model::TabId &id) {
    if (m_controller.state().tabIndex(id) >= 0)
        ScriptStructure::setActiveTab(Edit(m_controller), id);
}

void TabEditing::selectNextTab() {
    step(1);
}

void TabEditing::selectPreviousTab() {
    step(-1);
}

void TabEditing::step(qsizetype distance) {
    const model::ProjectTab *active = m_controller.activeTab();
    if (active == nullptr)
        return;
    const QList<model::ProjectTab> &tabs = m_controller.project().tabs;
    const qsizetype target = m_controller.state().tabIndex(active->id) + distance;
    if (target < 0 || target >= tabs.size())
        return;
    const Edit edit(m_controller);
    ScriptStructure::setActiveTab(edit, model::TabId(tabs.at(target).id));
    if (const model::LineIdList &lines = edit->scriptLineIds(); !lines.isEmpty())
        m_controller.selection().place(edit, lines.first(), Selection::Editing::No);
}

void TabEditing::addTab() {
    const Edit edit(m_controller, QStringLiteral("Add Tab"));
    const model::ProjectLine line = model::ProjectLine::makeNew();
    const qsizetype count = edit->project.tabs.size();
    const model::ProjectTab tab{model::TabId::create(), QStringLiteral("Script %1").arg(count + 1), {}};
    ScriptStructure::insertTab(edit, count, tab, {line});
    ScriptStructure::setActiveTab(edit, tab.id);
    m_controller.selection().place(edit, line.lineId, Selection::Editing::No);
}

void TabEditing::closeTab(const model::TabId &id) {
    const qsizetype index = m_controller.state().tabIndex(id);
    if (!canCloseTab() || index < 0)
        return;
    const Edit edit(m_controller, QStringLiteral("Close Tab"));
    const auto editing = edit->selection.editingLineId;
    if (editing && edit->project.tabs.at(index).lineIds.contains(*editing)) {
        edit->selection.editingLineId.reset();
        m_controller.selection().normalise(edit, std::nullopt, Selection::AutoSelect::Off);
    }
    ScriptStructure::removeTab(edit, index);
    // A file may have tabs without lines.
    if (edit->project.lines.isEmpty())
        ScriptStructure::insertLines(edit, edit->activeTab()->id, 0, {model::ProjectLine::makeNew()});
}

void TabEditing::moveTab(const model::TabId &id, qsizetype destination) {
    const qsizetype index = m_controller.state().tabIndex(id);
    const qsizetype before = std::clamp<qsizetype>(destination, 0, m_controller.project().tabs.size());
    if (index < 0 || before == index || before == index + 1)
        return;
    const Edit edit(m_controller, QStringLiteral("Move Tab"));
    ScriptStructure::moveTab(edit, index, before > index ? before - 1 : before);
}

void TabEditing::renameTab(const model::TabId &id, const QString &name) {
    const qsizetype index = m_controller.state().tabIndex(id);
    if (index < 0 || m_controller.project().tabs.at(index).name == name)
        return;
    const Edit edit(m_controller, QStringLiteral("Rename Tab"));
    edit->project.tabs[index].name = name;
}

void TabEditing::duplicateTab(const model::TabId &id) {
    const qsizetype index = m_controller.state().tabIndex(id);
    if (index < 0)
        return;
    const Edit edit(m_controller, QStringLiteral("Duplicate Tab"));
    const model::ProjectTab source = edit->project.tabs.at(index);
    const model::ProjectTab copy{model::TabId::create(), source.name + QStringLiteral(" copy"), {}};
    std::vector<model::ProjectLine> lines;
    for (const model::LineId &lineId : source.lineIds) {
        const model::ProjectLine *line = edit->findLine(lineId);
        if (line == nullptr)
            continue;
        lines.push_back(*line);
        lines.back().lineId = model::LineId::create();
        edit.copyRuntime(lineId, lines.back().lineId);
    }
    ScriptStructure::insertTab(edit, index + 1, copy, lines);
    ScriptStructure::setActiveTab(edit, copy.id);
    if (!lines.empty())
        m_controller.selection().place(edit, lines.front().lineId, Selection::Editing::No);
}

} // namespace orlenta::controller
