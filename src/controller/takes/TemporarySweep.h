#pragma once

#include <chrono>

#include <QtCore/QString>

namespace orlenta::controller {

/// Removes leftovers of earlier runs from the temporary and the caches folder. Never touches a project's own audio.
/// Ignores all failures. Blocking; any thread.
void sweepTemporaryFiles(std::chrono::system_clock::time_point now);

/// Removes temporary audio older than seven days, and direction audio kept for undo at any age.
void sweepTemporaryFolder(const QString &folder, std::chrono::system_clock::time_point now);

/// Removes generated and preview audio older than seven days, which a crash left behind. Keeps recordings, since they
/// can't be made again.
void sweepCaches(const QString &folder, std::chrono::system_clock::time_point now);

} // namespace orlenta::controller
