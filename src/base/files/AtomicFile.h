#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/files/ContentCopy.h"
#include "base/files/FileError.h"
#include "base/files/RegularFile.h"
#include "base/Result.h"

namespace orlenta::base {

// A project's files are written through these functions. On success the file has its new content, and both the file and
// its directory entry are on disk. On failure the old file is untouched and no temporary file remains. One exception:
// if only the final flush of the folder fails, the new content is in place but may not survive a power cut. If the path
// is a symbolic link, the link stays and its target is written. PendingFile documents the temporary file and the
// permissions. Don't use QSaveFile: it treats a short write as success and never flushes the folder. Blocking; any
// thread.

/// Creates or replaces the file.
Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data);

/// Creates or replaces `destination` with the content of the regular file `source`. Doesn't copy permissions. Copying a
/// file onto itself does nothing.
Result<void, FileError> copyAtomically(const QString &source, const QString &destination,
                                       const CopyControl &control = {});
/// Copies from an open file, which may have been renamed or deleted since.
Result<void, FileError> copyAtomically(const RegularFile &source, const QString &destination,
                                       const CopyControl &control = {});

/// Moves a finished file to `destination`, flushing it first. Renames it if possible; otherwise, for example across
/// file systems, copies it and removes the source. If only removing the source fails, the move still succeeds.
Result<void, FileError> moveAtomically(const QString &source, const QString &destination,
                                       const CopyControl &control = {});

/// Flushes an existing file or folder, and its directory entry, to disk.
Result<void, FileError> syncToDisk(const QString &path);

} // namespace orlenta::base
