#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/files/ContentCopy.h"
#include "base/files/FileError.h"
#include "base/files/RegularFile.h"
#include "base/Result.h"

namespace orlenta::base {

// The one way that data reaches a file of the user's. On success the file holds all of the new content, and it and its
// folder's entry are on disk; on a failure it stands as it was, byte for byte, and no temporary file is left. Only
// where the very last step fails, the flush of the folder, is the new content in place without being certain to outlive
// a power cut. The file may be a link, which stays one; see PendingFile for the temporary file and the mode. QSaveFile
// is no substitute: it takes a short write for a success and never flushes the folder. Blocking; any thread.

/// Replaces or makes the file with `data`.
Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data);

/// Replaces or makes `destination` with the content of the plain file `source`; its mode stays behind. A file copied
/// onto itself is left as it is.
Result<void, FileError> copyAtomically(const QString &source, const QString &destination,
                                       const CopyControl &control = {});
/// The same from a file that is open, whatever has become of its name.
Result<void, FileError> copyAtomically(const RegularFile &source, const QString &destination,
                                       const CopyControl &control = {});

/// Makes a finished file, which may not be on disk yet, `destination`: by a rename, or where that can't be done, across
/// file systems say, by a copy. The source is gone then, unless it can't be removed.
Result<void, FileError> moveAtomically(const QString &source, const QString &destination,
                                       const CopyControl &control = {});

/// Flushes a file or folder that is in place already, and its own folder's entry, to disk.
Result<void, FileError> syncToDisk(const QString &path);

} // namespace orlenta::base
