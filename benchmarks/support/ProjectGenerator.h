#pragma once

#include "model/Project.h"

namespace orlenta::benchmarks {

/// A project like one from a long production: lines of 20 to 200 characters with tags and some accents, in tabs of 500,
/// cast to 12 voices, each with `takesPerLine` takes, every tenth with a recording. The same arguments give the same
/// texts; ids differ.
[[nodiscard]] model::Project generateProject(int lines, int takesPerLine);

} // namespace orlenta::benchmarks
