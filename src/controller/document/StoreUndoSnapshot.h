#pragma once

#include <QtCore/QString>

#include "controller/document/ProjectState.h"

namespace orlenta::controller {

class ProjectController;

/// One full undo state. Its parts are shared with the live state until one of the two changes, so taking one costs a
/// handful of reference counts. Tabs and active tab are inside the project.
struct StoreUndoSnapshot {
    StoreUndoSnapshot() = default;
    explicit StoreUndoSnapshot(const ProjectState &state)
        : project(state.project), selection(state.selection), nextColorIndex(state.nextColorIndex),
          lineRuntime(state.lineRuntime), projectURL(state.projectURL) {}

    model::Project project;
    SelectionValues selection;
    int nextColorIndex = 1;
    LineRuntimeMap lineRuntime;
    /// The project folder at that moment, which the runtime's URLs lie in.
    QUrl projectURL;
};

/// Swaps the stored state with the live one, which becomes an undo step of the same name: undo and redo alike. What
/// generates goes on generating, notes stay as they are written, and so do the project's identity and name.
void restoreSnapshot(ProjectController &controller, const StoreUndoSnapshot &snapshot, const QString &actionName);

} // namespace orlenta::controller
