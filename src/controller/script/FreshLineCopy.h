#pragma once

#include "model/ProjectLine.h"

namespace orlenta::controller {

/// A copy of the line as a line of its own: it, its takes and its recordings have new ids, and the copies name the same
/// audio files. Pure.
[[nodiscard]] model::ProjectLine freshLineCopy(const model::ProjectLine &line);

} // namespace orlenta::controller
