#pragma once

#include <QtCore/QString>

namespace orlenta::base {

/// Why a file operation failed, in the operating system's words.
struct FileError {
    QString path;
    /// The errno value, or 0 if there is none.
    int code = 0;
    QString reason;

    /// "<file name>: <reason>", for the user.
    [[nodiscard]] QString description() const;
    /// The caller cancelled the operation.
    [[nodiscard]] bool isCancelled() const;

    [[nodiscard]] static FileError fromErrno(const QString &path, int code);
    [[nodiscard]] static FileError withReason(const QString &path, const QString &reason);

    friend bool operator==(const FileError &, const FileError &) = default;
};

} // namespace orlenta::base
