#include "base/files/FileError.h"

#include <cerrno>
#include <cstring>

#include <QtCore/QFileInfo>

namespace orlenta::base {

QString FileError::description() const {
    return QFileInfo(path).fileName() + QStringLiteral(": ") + reason;
}

bool FileError::isCancelled() const {
    return code == ECANCELED;
}

FileError FileError::fromErrno(const QString &path, int code) {
    return {path, code, QString::fromLocal8Bit(std::strerror(code))};
}

FileError FileError::withReason(const QString &path, const QString &reason) {
    return {path, 0, reason};
}

} // namespace orlenta::base
