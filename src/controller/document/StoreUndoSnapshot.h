#pragma once

#include <QtCore/QString>

#include "controller/document/ProjectState.h"

namespace orlenta::controller {

class ProjectController;

/// A complete undo state. Shares its data with the live state until either changes, so taking one costs a handful of
/// reference counts. Tabs and the active tab are part of the project.
struct StoreUndoSnapshot {
    StoreUndoSnapshot() = default;
    explicit StoreUndoSnapshot(const ProjectState &state)
        : project(state.project), selection(state.selection), nextColorIndex(state.nextColorIndex),
          lineRuntime(state.lineRuntime), projectURL(state.projectURL) {}

    model::Project project;
    SelectionValues selection;
    int nextColorIndex = 1;
    LineRuntimeMap lineRuntime;
    /// The project folder at that time, which contains the runtime URLs.
    QUrl projectURL;
};

/// Restores the stored state and registers the previous one as an undo step of the same name. Serves both undo and
/// redo. Generations in progress, notes, and the project's id and name stay as they are.
void restoreSnapshot(ProjectController &controller, const StoreUndoSnapshot &snapshot, const QString &actionName);

} // namespace orlenta::controller
