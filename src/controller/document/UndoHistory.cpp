#include "controller/document/UndoHistory.h"

#include <utility>

#include "controller/document/Document.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {
namespace {

// Writing notes is no step of its own, so nothing could bring back what an undo of something else took away.
void keepNotes(const model::LineList &live, model::LineList &next) {
    for (qsizetype index = 0; index < next.size(); ++index) {
        const model::ProjectLine &stored = next.at(index);
        // Shared by both: the usual case by far.
        if (index < live.size() && &live.at(index) == &stored)
            continue;
        const model::ProjectLine *present = live.find(stored.lineId);
        if (present == nullptr || present->notes == stored.notes)
            continue;
        model::ProjectLine line = stored;
        line.notes = present->notes;
        next.replace(index, std::move(line));
    }
}

} // namespace

StoreUndoSnapshot UndoHistory::takeSnapshot() {
    m_parts.typing.commit();
    return {m_parts.document.project(), m_parts.selection.values(), m_parts.document.nextColorIndex(),
            m_parts.runtime.states(), m_parts.document.projectURL()};
}

void UndoHistory::registerUndo(const StoreUndoSnapshot &before, const QString &actionName) {
    m_parts.typing.refreshBaselines(TypingSession::Flush::No);
    UndoManager &manager = m_parts.undoManager;
    const bool alone = manager.groupingLevel() == 0;
    if (alone)
        manager.beginUndoGrouping();
    manager.registerUndo([this, before, actionName] { apply(before, actionName); });
    manager.setActionName(actionName);
    if (alone)
        manager.endUndoGrouping();
}

void UndoHistory::apply(const StoreUndoSnapshot &snapshot, const QString &actionName) {
    const Document::Change change(m_parts.document);
    const StoreUndoSnapshot present = takeSnapshot();
    restore(snapshot);
    registerUndo(present, actionName);
}

void UndoHistory::restore(const StoreUndoSnapshot &snapshot) {
    if (snapshot.project.pronunciations != m_parts.document.project().pronunciations)
        m_parts.document.invalidatePronunciations(EditKey());
    restoreProject(snapshot.project);
    m_parts.selection.restore(snapshot.selection, EditKey());
    m_parts.document.setNextColorIndex(snapshot.nextColorIndex, EditKey());
    restoreRuntime(snapshot);
    m_parts.typing.refreshBaselines(TypingSession::Flush::Yes);
    std::optional<model::LineId> preferred = snapshot.selection.editingLineId;
    if (!preferred && snapshot.selection.selectedLineIds.size() == 1)
        preferred = *snapshot.selection.selectedLineIds.begin();
    m_parts.selection.normalise(preferred, Selection::AutoSelect::On);
}

// The project's identity isn't undone: a Save As or a rename stays. Nor are notes.
void UndoHistory::restoreProject(const model::Project &stored) {
    const model::Project &live = m_parts.document.project();
    model::Project next = stored;
    next.projectId = live.projectId;
    next.projectName = live.projectName;
    next.activeTabId = live.activeTabId;
    keepNotes(live.lines, next.lines);
    m_parts.document.restructure(EditKey()) = next;
    m_parts.structure.setTabs(stored.tabs, EditKey());
    if (stored.activeTabId)
        m_parts.structure.setActiveTab(*stored.activeTabId, EditKey());
}

void UndoHistory::restoreRuntime(const StoreUndoSnapshot &snapshot) {
    LineRuntimeMap states = snapshot.lineRuntime;
    const LineRuntimeMap &live = m_parts.runtime.states();
    // Undo must neither end nor fake a generation in progress.
    const QSet<model::LineId> changed = states.differences(live);
    for (const model::LineId &id : changed) {
        LineRuntimeState state = states.value(id);
        const bool isGenerating = live.value(id).isGenerating;
        if (state.isGenerating == isGenerating)
            continue;
        state.isGenerating = isGenerating;
        states.set(id, state);
    }
    if (snapshot.projectURL != m_parts.document.projectURL() && !m_parts.document.folder().isEmpty())
        m_parts.media.rebase(states);
    m_parts.runtime.replaceAll(states, EditKey());
}

} // namespace orlenta::controller
