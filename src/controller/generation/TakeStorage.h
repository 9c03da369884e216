#pragma once

#include <optional>

#include <QtCore/QString>

#include "controller/generation/SkippedLines.h"

namespace orlenta::controller {

/// Why a take of `bytes` couldn't be stored in the project at `projectFolder`; none if it could. The folder is empty
/// for an unsaved project, whose takes stay in the private caches folder. Writes nothing. Blocking; any thread.
[[nodiscard]] std::optional<SkipReason> takeStorageProblem(const QString &projectFolder, qint64 bytes);

/// Whether nothing can be written to the folder, because of its permissions or its file system. Blocking; any thread.
[[nodiscard]] bool isReadOnlyFolder(const QString &folder);

} // namespace orlenta::controller
