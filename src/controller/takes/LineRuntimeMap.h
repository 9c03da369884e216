#pragma once

#include "base/SharedMap.h"
#include "controller/takes/LineRuntimeState.h"
#include "model/Ids.h"

namespace orlenta::controller {

/// The runtime states of a project's lines. A line without an entry has an empty state.
using LineRuntimeMap = base::SharedMap<model::LineId, LineRuntimeState>;

} // namespace orlenta::controller
