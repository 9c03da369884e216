#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/files/FileError.h"
#include "base/Result.h"

namespace orlenta::base {

/// The one safe write: on success the file at `path` holds exactly `data`, and both the file and its folder's entry are
/// on disk. On a failure it stands as it was, byte for byte, and no temporary file is left; only when the very last
/// step fails, the flush of the folder, does the new content stand in place without being certain to outlive a power
/// cut. Blocking; any thread; writers of one folder, in whatever process, take turns.
///
/// The temporary file is "<name>.tmp" beside the target; one left by a process that was killed is replaced. An existing
/// target keeps its mode, and a link to it stays a link; a new one gets 0644 less the umask. QSaveFile is no
/// substitute: it takes a short write for a success and never syncs the folder.
Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data);

/// Removes what a killed process may have left of its last safe write to `path`. Waits for a write in progress.
/// Blocking; any thread.
void removeStaleTemporary(const QString &path);

/// Flushes a file that something else wrote, and the entry of its folder, to disk. Blocking; any thread.
Result<void, FileError> syncToDisk(const QString &path);

/// Reads a whole file; a pipe, device or folder is refused, so that reading can't wait for ever. Blocking; any thread.
Result<QByteArray, FileError> readWholeFile(const QString &path);

} // namespace orlenta::base
