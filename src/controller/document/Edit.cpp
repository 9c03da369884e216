#include "controller/document/Edit.h"

#include "controller/document/ProjectChange.h"
#include "controller/document/StoreUndoSnapshot.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/ProjectController.h"

namespace orlenta::controller {

Edit::Edit(ProjectController &controller)
    : m_controller(controller), m_state(controller.m_state), m_isOutermost(controller.m_openEdits++ == 0) {
    if (m_isOutermost)
        m_before = m_state;
}

Edit::Edit(ProjectController &controller, const QString &actionName) : Edit(controller) {
    Q_ASSERT(!actionName.isEmpty());
    controller.typing().commit();
    if (!m_isOutermost)
        m_before = m_state;
    m_actionName = actionName;
}

Edit::~Edit() {
    QList<ProjectChange> changes;
    if (m_isOutermost) {
        settleState();
        changes = changesBetween(m_before, m_state);
    }
    --m_controller.m_openEdits;
    if (!m_actionName.isEmpty() && hasUndoableChange())
        registerUndo();
    // An observer may change the project again. That is a separate edit with its own announcement.
    for (const ProjectChange &change : std::as_const(changes))
        m_controller.announce(change);
}

void Edit::settleState() const {
    if (m_state.selection.selectedLineIds != m_before.selection.selectedLineIds ||
        m_state.project.selection != m_before.project.selection || m_state.scriptLineIds() != m_before.scriptLineIds())
        m_state.project.selection = {m_state.selectedLinesInScript(), m_state.singleSelectedLineId()};
    if (m_state.project.pronunciations != m_before.project.pronunciations) {
        m_state.pronunciationDirty = true;
        ++m_state.pronunciationRevision;
    }
    if (!recordsDiffer(m_before.project, m_state.project))
        return;
    m_state.project.modifiedAt = m_controller.now();
    m_state.hasUnsavedChanges = true;
}

// A step that changes nothing would do nothing when undone, and would discard what can be redone.
bool Edit::hasUndoableChange() const {
    return recordsDiffer(m_before.project, m_state.project) || m_before.lineRuntime != m_state.lineRuntime;
}

void Edit::registerUndo() const {
    m_controller.typing().refreshBaselines();
    UndoManager &manager = m_controller.undoManager();
    const bool isAlone = manager.groupingLevel() == 0;
    if (isAlone)
        manager.beginUndoGrouping();
    manager.registerUndo([&controller = m_controller, snapshot = StoreUndoSnapshot(m_before), name = m_actionName] {
        restoreSnapshot(controller, snapshot, name);
    });
    manager.setActionName(m_actionName);
    if (isAlone)
        manager.endUndoGrouping();
}

void Edit::copyRuntime(const model::LineId &from, const model::LineId &to) const {
    LineRuntimeState runtime = m_state.lineRuntime.value(from);
    runtime.isGenerating = false;
    m_state.lineRuntime.insert(to, runtime);
}

} // namespace orlenta::controller
