#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// Why a file operation failed, in the operating system's own words.
struct FileError {
    QString path;
    /// The errno value, or 0 where the failure has none (a short write, say).
    int code = 0;
    QString reason;

    /// "<file name>: <reason>", as a user reads it.
    [[nodiscard]] QString description() const;
    /// It was the caller who called the operation off.
    [[nodiscard]] bool isCancelled() const;

    [[nodiscard]] static FileError fromErrno(const QString &path, int code);
    [[nodiscard]] static FileError withReason(const QString &path, const QString &reason);

    friend bool operator==(const FileError &, const FileError &) = default;
};

} // namespace orlenta::base
