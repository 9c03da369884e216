#include "controller/document/StoreUndoSnapshot.h"

#include <utility>

#include "controller/document/Edit.h"
#include "controller/document/TypingSession.h"
#include "controller/ProjectController.h"
#include "controller/script/ScriptStructure.h"
#include "controller/script/Selection.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {
namespace {

// Editing notes isn't undoable, so undoing something else must not lose them.
void keepNotes(const model::LineTable &live, model::LineTable &next) {
    QHash<model::LineId, QString> kept;
    next.forEachDifference(live, [&kept](const model::LineId &id, const auto *stored, const auto *present) {
        if (stored != nullptr && present != nullptr && stored->notes != present->notes)
            kept.insert(id, present->notes);
    });
    for (auto notes = kept.cbegin(); notes != kept.cend(); ++notes)
        next.update(notes.key(), [&notes](model::ProjectLine &line) { line.notes = notes.value(); });
}

void restoreProject(const Edit &edit, const model::Project &stored) {
    const model::Project &live = edit->project;
    model::Project next = stored;
    next.projectId = live.projectId;
    next.projectName = live.projectName;
    next.activeTabId = live.activeTabId;
    keepNotes(live.lines, next.lines);
    edit->project = std::move(next);
    ScriptStructure::dropUnknownActiveTab(edit);
    if (stored.activeTabId)
        ScriptStructure::setActiveTab(edit, *stored.activeTabId);
}

void restoreRuntime(const Edit &edit, const StoreUndoSnapshot &snapshot) {
    LineRuntimeMap next = snapshot.lineRuntime;
    QHash<model::LineId, bool> generating;
    // Undo must neither end nor resurrect a generation in progress.
    next.forEachDifference(edit->lineRuntime, [&](const model::LineId &id, const auto *stored, const auto *present) {
        const bool isGenerating = present != nullptr && present->isGenerating;
        if ((stored != nullptr && stored->isGenerating) != isGenerating)
            generating.insert(id, isGenerating);
    });
    for (auto line = generating.cbegin(); line != generating.cend(); ++line) {
        LineRuntimeState state = next.value(line.key());
        state.isGenerating = line.value();
        next.insert(line.key(), state);
    }
    edit->lineRuntime = std::move(next);
    if (snapshot.projectURL != edit->projectURL && !edit->folder().isEmpty())
        edit.controller().media().rebaseRuntimeAudio(edit);
}

} // namespace

void restoreSnapshot(ProjectController &controller, const StoreUndoSnapshot &snapshot, const QString &actionName) {
    const Edit edit(controller, actionName);
    restoreProject(edit, snapshot.project);
    edit->selection = snapshot.selection;
    edit->nextColorIndex = snapshot.nextColorIndex;
    restoreRuntime(edit, snapshot);
    controller.typing().refreshBaselines();
    ++edit->typingFlushVersion;
    std::optional<model::LineId> preferred = snapshot.selection.editingLineId;
    if (!preferred && snapshot.selection.selectedLineIds.size() == 1)
        preferred = *snapshot.selection.selectedLineIds.begin();
    controller.selection().normalise(edit, preferred, Selection::AutoSelect::On);
}

} // namespace orlenta::controller
