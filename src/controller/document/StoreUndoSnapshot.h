#pragma once

#include <QtCore/QUrl>

#include "controller/script/SelectionValues.h"
#include "controller/takes/LineRuntimeMap.h"
#include "model/Project.h"

namespace orlenta::controller {

/// One full undo state. Its parts are shared with the live state until one of the two changes, so that taking one costs
/// a handful of reference counts. Tabs and active tab are inside the project.
struct StoreUndoSnapshot {
    model::Project project;
    SelectionValues selection;
    int nextColorIndex = 1;
    LineRuntimeMap lineRuntime;
    /// The project folder at that moment, which the runtime's URLs lie in.
    QUrl projectURL;
};

} // namespace orlenta::controller
