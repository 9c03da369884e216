#pragma once

#include <optional>

#include <QtCore/QString>

#include "controller/generation/SkippedLines.h"

namespace orlenta::controller {

/// Why a take of `bytes` couldn't be stored in the project at `projectFolder`; none if it could. An empty folder is a
/// project that has none yet: its takes stay in the private caches folder, where every take is made. Writes nothing.
/// Blocking; any thread.
[[nodiscard]] std::optional<SkipReason> takeStorageProblem(const QString &projectFolder, qint64 bytes);

} // namespace orlenta::controller
