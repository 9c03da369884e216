#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"
#include "base/Result.h"

namespace orlenta::base {

/// A regular file, open for reading.
struct RegularFile {
    QString path;
    FileDescriptor descriptor;
    /// Bytes, when it was opened.
    qint64 size = 0;
};

/// Opens a regular file for reading. Refuses pipes, devices and folders, which might block forever. Any thread.
[[nodiscard]] Result<RegularFile, FileError> openRegularFile(const QString &path);

/// Reads a whole regular file. Blocking; any thread.
[[nodiscard]] Result<QByteArray, FileError> readWholeFile(const QString &path);

} // namespace orlenta::base
