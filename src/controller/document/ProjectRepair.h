#pragma once

#include "model/Project.h"

namespace orlenta::controller {

/// The project with what an open one always has: at least one preset, one line and one tab, each line in exactly
/// one tab, and an active tab that exists. Pure.
[[nodiscard]] model::Project repairedProject(model::Project project);

} // namespace orlenta::controller
