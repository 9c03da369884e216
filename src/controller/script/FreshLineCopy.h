#pragma once

#include "model/ProjectLine.h"

namespace orlenta::controller {

/// A duplicate of the line. It, its takes and its recordings get new ids; the audio files are shared. Pure.
[[nodiscard]] model::ProjectLine freshLineCopy(const model::ProjectLine &line);

} // namespace orlenta::controller
