#include "base/files/RegularFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

#include <QtCore/QFile>

namespace orlenta::base {

Result<RegularFile, FileError> openRegularFile(const QString &path) {
    // Without O_NONBLOCK, opening a pipe would block until a writer appears.
    constexpr int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    FileDescriptor descriptor(::open(QFile::encodeName(path).constData(), flags));
    struct stat status {};
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0)
        return fail(FileError::fromErrno(path, errno));
    if (S_ISDIR(status.st_mode))
        return fail(FileError::fromErrno(path, EISDIR));
    if (!S_ISREG(status.st_mode))
        return fail(FileError::withReason(path, QStringLiteral("not a regular file")));
    return RegularFile{path, std::move(descriptor), status.st_size};
}

Result<QByteArray, FileError> readWholeFile(const QString &path) {
    const auto opened = openRegularFile(path);
    if (!opened)
        return fail(opened.error());
    QFile file;
    if (!file.open(opened->descriptor.get(), QIODevice::ReadOnly))
        return fail(FileError::withReason(path, file.errorString()));
    QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(FileError::withReason(path, file.errorString()));
    return data;
}

} // namespace orlenta::base
