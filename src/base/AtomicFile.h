#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/FileError.h"
#include "base/Result.h"

namespace orlenta::base {

/// The one safe write: afterwards the file at `path` holds exactly `data` and both the file and its folder's entry are
/// on disk, or it stands as it was, byte for byte, and no temporary file is left. Blocking; any thread.
///
/// The temporary file is "<name>.tmp" beside the target; one left by a process that was killed is replaced. An existing
/// target keeps its mode; a new one gets 0644 less the umask. QSaveFile is no substitute: it takes a short write for a
/// success and never syncs the folder.
Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data);

/// Flushes a file that something else wrote, and the entry of its folder, to disk. Blocking; any thread.
Result<void, FileError> syncToDisk(const QString &path);

/// Reads a whole file. Blocking; any thread.
Result<QByteArray, FileError> readWholeFile(const QString &path);

} // namespace orlenta::base
