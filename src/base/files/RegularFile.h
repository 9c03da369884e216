#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"
#include "base/Result.h"

namespace orlenta::base {

/// A plain file, opened for reading.
struct RegularFile {
    QString path;
    FileDescriptor descriptor;
    /// Bytes, as of the opening.
    qint64 size = 0;
};

/// Opens a plain file for reading. A pipe, device or folder is refused at once, since reading it might never end.
/// Any thread.
[[nodiscard]] Result<RegularFile, FileError> openRegularFile(const QString &path);

/// Reads a whole plain file. Blocking; any thread.
[[nodiscard]] Result<QByteArray, FileError> readWholeFile(const QString &path);

} // namespace orlenta::base
