#pragma once

#include "model/Project.h"

namespace orlenta::benchmarks {

/// A project as a long production leaves it: lines of 20 to 200 characters with tags and some accents, spread over tabs
/// of 500, cast to 12 voices, with that many takes each and a recording on every tenth. The same call gives the same
/// texts; ids differ.
[[nodiscard]] model::Project generateProject(int lines, int takesPerLine);

} // namespace orlenta::benchmarks
