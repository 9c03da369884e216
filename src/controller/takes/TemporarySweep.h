#pragma once

#include <chrono>

#include <QtCore/QString>

namespace orlenta::controller {

/// Removes the temporary audio that earlier runs left behind: what is older than seven days, and direction audio kept
/// for undo at any age. A project's own audio is never touched. Ignores every failure. Blocking; any thread.
void sweepTemporaryFiles(std::chrono::system_clock::time_point now);
/// The same in a temporary folder of the caller's choice.
void sweepTemporaryFiles(const QString &temporaryFolder, std::chrono::system_clock::time_point now);

} // namespace orlenta::controller
