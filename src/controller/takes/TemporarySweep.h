#pragma once

#include <chrono>

#include <QtCore/QString>

namespace orlenta::controller {

/// Removes what earlier runs left in the temporary and the caches folder. A project's own audio is never touched.
/// Ignores every failure. Blocking; any thread.
void sweepTemporaryFiles(std::chrono::system_clock::time_point now);

/// Removes temporary audio that is older than seven days, and direction audio kept for undo at any age.
void sweepTemporaryFolder(const QString &folder, std::chrono::system_clock::time_point now);

/// Removes generated and preview audio that is older than seven days: a crash kept it from its take. Recordings stay,
/// since nobody can make them again.
void sweepCaches(const QString &folder, std::chrono::system_clock::time_point now);

} // namespace orlenta::controller
