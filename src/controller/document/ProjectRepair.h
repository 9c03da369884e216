#pragma once

#include "model/Project.h"

namespace orlenta::controller {

/// Establishes what every open project has: at least one preset, one line and one tab, each line in exactly one tab,
/// and an existing active tab. Pure.
[[nodiscard]] model::Project repairedProject(model::Project project);

} // namespace orlenta::controller
