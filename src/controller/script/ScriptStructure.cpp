#include "controller/script/ScriptStructure.h"

#include <algorithm>

#include "controller/document/Document.h"
#include "controller/document/TypingSession.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"

namespace orlenta::controller {

ScriptStructure::ScriptStructure(Document &document, TypingSession &typing, Selection &selection, LineRuntime &runtime)
    : m_document(document), m_typing(typing), m_selection(selection), m_runtime(runtime) {}

void ScriptStructure::setTabs(const QList<model::ProjectTab> &tabs, EditKey key) {
    const Document::Change change(m_document);
    model::Project &project = m_document.restructure(key);
    project.tabs = tabs;
    if (project.activeTabId && project.findTab(*project.activeTabId) == nullptr) {
        project.activeTabId = tabs.isEmpty() ? std::nullopt : std::optional(tabs.first().id);
        m_selection.reconcile();
    }
    m_document.commitChange(key);
}

void ScriptStructure::setActiveTab(const model::TabId &id, EditKey key) {
    if (m_document.project().activeTabId == id)
        return;
    const Document::Change change(m_document);
    if (m_selection.editingLineId()) {
        m_typing.commit();
        m_selection.setEditingLineId(std::nullopt);
        m_selection.setTextSelectionRange(std::nullopt);
        m_selection.normalise(std::nullopt, Selection::AutoSelect::Off);
    }
    m_document.restructure(key).activeTabId = id;
    m_document.commitChange(key);
    m_selection.reconcile();
}

void ScriptStructure::setLineIds(const model::TabId &id, const QList<model::LineId> &lineIds, EditKey key) {
    QList<model::ProjectTab> tabs = m_document.project().tabs;
    if (const qsizetype index = m_document.tabIndex(id); index >= 0)
        tabs[index].lineIds = lineIds;
    setTabs(tabs, key);
}

void ScriptStructure::replaceActiveTabLines(const QList<model::LineId> &lineIds,
                                            const std::vector<model::ProjectLine> &newLines, EditKey key) {
    const model::ProjectTab *tab = m_document.activeTab();
    if (tab == nullptr)
        return;
    const Document::Change change(m_document);
    const QSet<model::LineId> kept(lineIds.begin(), lineIds.end());
    const QList<model::LineId> before = tab->lineIds;
    const model::TabId tabId = tab->id;
    addLines(newLines, key);
    for (const model::LineId &id : before)
        if (!kept.contains(id))
            m_runtime.remove(id, key);
    setLineIds(tabId, lineIds, key);
    renumberFromTabs(key);
    m_document.markDirty(key);
}

void ScriptStructure::addLines(const std::vector<model::ProjectLine> &lines, EditKey key) {
    const Document::Change change(m_document);
    model::LineList &all = m_document.restructure(key).lines;
    for (const model::ProjectLine &line : lines) {
        if (const qsizetype index = all.indexOf(line.lineId); index >= 0)
            all.replace(index, line);
        else
            all.append(line);
    }
}

void ScriptStructure::renumberFromTabs(EditKey key) {
    const Document::Change change(m_document);
    model::Project &project = m_document.restructure(key);
    std::vector<qsizetype> positions;
    positions.reserve(static_cast<size_t>(project.lines.size()));
    for (const model::ProjectTab &tab : project.tabs)
        for (const model::LineId &id : tab.lineIds)
            if (const qsizetype index = project.lines.indexOf(id); index >= 0)
                positions.push_back(index);
    project.lines.rearrange(positions);
    m_selection.normalise(std::nullopt, Selection::AutoSelect::On);
}

} // namespace orlenta::controller
