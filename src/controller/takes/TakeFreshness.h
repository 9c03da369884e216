#pragma once

#include "model/Project.h"

namespace orlenta::controller {

/// What differs between a line and the take that was made from it. If several do, the first of these.
enum class TakeChange { None, Text, Voice, Settings };

/// What has changed on the line since the take was made. A take records only the length of its text, so an edit that
/// keeps the length goes unnoticed.
[[nodiscard]] TakeChange changeSinceTake(const model::Project &project, const model::ProjectLine &line,
                                         const model::Take &take);

} // namespace orlenta::controller
