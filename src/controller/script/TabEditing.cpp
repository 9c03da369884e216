#include "controller/script/TabEditing.h"

#include <algorithm>

#include "controller/document/UndoHistory.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"

namespace orlenta::controller {

bool TabEditing::canCloseTab() const {
    return m_parts.document.project().tabs.size() >= 2;
}

void TabEditing::setActiveTab(const model::TabId &id) {
    if (m_parts.document.tabIndex(id) >= 0)
        m_parts.structure.setActiveTab(id, EditKey());
}

void TabEditing::selectNextTab() {
    step(1);
}

void TabEditing::selectPreviousTab() {
    step(-1);
}

void TabEditing::step(qsizetype distance) {
    const model::ProjectTab *active = m_parts.document.activeTab();
    if (active == nullptr)
        return;
    const QList<model::ProjectTab> &tabs = m_parts.document.project().tabs;
    const qsizetype target = m_parts.document.tabIndex(active->id) + distance;
    if (target < 0 || target >= tabs.size())
        return;
    const Document::Change change(m_parts.document);
    m_parts.structure.setActiveTab(model::TabId(tabs.at(target).id), EditKey());
    if (const QList<model::LineId> &lines = m_parts.document.scriptLineIds(); !lines.isEmpty())
        m_parts.selection.place(model::LineId(lines.first()), Selection::Editing::No, EditKey());
}

void TabEditing::addTab() {
    Document &document = m_parts.document;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    const model::ProjectLine line = model::ProjectLine::makeNew(document.project().lines.size());
    QList<model::ProjectTab> tabs = document.project().tabs;
    const model::ProjectTab tab{
        model::TabId::create(), QStringLiteral("Script %1").arg(tabs.size() + 1), {line.lineId}};
    tabs.append(tab);
    m_parts.structure.addLines({line}, EditKey());
    m_parts.structure.setTabs(tabs, EditKey());
    m_parts.structure.renumberFromTabs(EditKey());
    m_parts.structure.setActiveTab(tab.id, EditKey());
    m_parts.selection.place(line.lineId, Selection::Editing::No, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Add Tab"));
}

void TabEditing::closeTab(const model::TabId &id) {
    Document &document = m_parts.document;
    const qsizetype index = document.tabIndex(id);
    if (!canCloseTab() || index < 0)
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    QList<model::ProjectTab> tabs = document.project().tabs;
    const model::ProjectTab closed = tabs.takeAt(index);
    const bool wasActive = document.project().activeTabId == closed.id;
    const auto editing = m_parts.selection.editingLineId();
    if (editing && closed.lineIds.contains(*editing)) {
        m_parts.selection.setEditingLineId(std::nullopt);
        m_parts.selection.normalise(std::nullopt, Selection::AutoSelect::Off);
    }
    m_parts.structure.setTabs(tabs, EditKey());
    if (wasActive)
        m_parts.structure.setActiveTab(tabs.at(std::min(index, tabs.size() - 1)).id, EditKey());
    for (const model::LineId &line : closed.lineIds)
        m_parts.runtime.remove(line, EditKey());
    m_parts.structure.renumberFromTabs(EditKey());
    m_parts.selection.normalise(std::nullopt, Selection::AutoSelect::On);
    m_parts.history.registerUndo(before, QStringLiteral("Close Tab"));
}

void TabEditing::moveTab(const model::TabId &id, qsizetype destination) {
    Document &document = m_parts.document;
    const qsizetype index = document.tabIndex(id);
    QList<model::ProjectTab> tabs = document.project().tabs;
    const qsizetype before = std::clamp<qsizetype>(destination, 0, tabs.size());
    if (index < 0 || before == index || before == index + 1)
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot snapshot = m_parts.history.takeSnapshot();
    tabs.move(index, before > index ? before - 1 : before);
    m_parts.structure.setTabs(tabs, EditKey());
    m_parts.structure.renumberFromTabs(EditKey());
    m_parts.history.registerUndo(snapshot, QStringLiteral("Move Tab"));
}

void TabEditing::renameTab(const model::TabId &id, const QString &name) {
    Document &document = m_parts.document;
    const qsizetype index = document.tabIndex(id);
    if (index < 0 || document.project().tabs.at(index).name == name)
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    QList<model::ProjectTab> tabs = document.project().tabs;
    tabs[index].name = name;
    m_parts.structure.setTabs(tabs, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Rename Tab"));
}

void TabEditing::duplicateTab(const model::TabId &id) {
    Document &document = m_parts.document;
    const qsizetype index = document.tabIndex(id);
    if (index < 0)
        return;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    QList<model::ProjectTab> tabs = document.project().tabs;
    const model::ProjectTab source = tabs.at(index);
    model::ProjectTab copy{model::TabId::create(), source.name + QStringLiteral(" copy"), {}};
    std::vector<model::ProjectLine> lines;
    for (const model::LineId &lineId : source.lineIds) {
        const model::ProjectLine *line = document.findLine(lineId);
        if (line == nullptr)
            continue;
        lines.push_back(*line);
        lines.back().lineId = model::LineId::create();
        copy.lineIds.append(lines.back().lineId);
        m_parts.runtime.copyState(lineId, lines.back().lineId, EditKey());
    }
    tabs.insert(index + 1, copy);
    m_parts.structure.addLines(lines, EditKey());
    m_parts.structure.setTabs(tabs, EditKey());
    m_parts.structure.renumberFromTabs(EditKey());
    m_parts.structure.setActiveTab(copy.id, EditKey());
    if (!copy.lineIds.isEmpty())
        m_parts.selection.place(copy.lineIds.first(), Selection::Editing::No, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Duplicate Tab"));
}

} // namespace orlenta::controller
