#include "base/files/AtomicFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/files/FilePlace.h"
#include "base/files/PendingFile.h"

namespace orlenta::base {
namespace {

bool isSameFile(const RegularFile &file, const QString &path) {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file.descriptor.get(), &opened) == 0 && ::stat(QFile::encodeName(path).constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

Result<void, FileError> copyAndRemove(const QString &source, const QString &destination, const CopyControl &control) {
    if (auto copied = copyAtomically(source, destination, control); !copied)
        return copied;
    ::unlink(QFile::encodeName(source).constData());
    return {};
}

} // namespace

Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data) {
    auto file = PendingFile::create(path);
    if (!file)
        return fail(file.error());
    if (const int code = file->descriptor().write({data.constData(), static_cast<size_t>(data.size())}))
        return fail(FileError::fromErrno(path, code));
    return file.value().commit(data.size());
}

Result<void, FileError> copyAtomically(const QString &source, const QString &destination, const CopyControl &control) {
    const auto opened = openRegularFile(source);
    if (!opened)
        return fail(opened.error());
    return copyAtomically(opened.value(), destination, control);
}

Result<void, FileError> copyAtomically(const RegularFile &source, const QString &destination,
                                       const CopyControl &control) {
    if (isSameFile(source, destination))
        return {};
    auto file = PendingFile::create(destination);
    if (!file)
        return fail(file.error());
    if (auto copied = copyContent(source, file.value(), control); !copied)
        return copied;
    return file.value().commit(source.size);
}

Result<void, FileError> moveAtomically(const QString &source, const QString &destination, const CopyControl &control) {
    const auto opened = openRegularFile(source);
    if (!opened)
        return fail(opened.error());
    if (isSameFile(*opened, destination))
        return {};
    // Renaming a link would move the link, not the file. Copy, and leave the link's target alone.
    if (QFileInfo(source).isSymLink())
        return copyAndRemove(source, destination, control);
    const auto place = FilePlace::find(destination);
    if (!place)
        return fail(place.error());
    place->applyMode(opened->descriptor);
    if (const int code = opened->descriptor.flush())
        return fail(FileError::fromErrno(source, code));
    if (place->take(AT_FDCWD, QFile::encodeName(source)) != 0)
        return copyAndRemove(source, destination, control);
    const int code = place->folder().flush();
    return code == 0 ? Result<void, FileError>() : fail(FileError::fromErrno(destination, code));
}

Result<void, FileError> syncToDisk(const QString &path) {
    const QByteArray name = QFile::encodeName(path);
    int code = 0;
    if (const FolderHandle itself(name); itself.error() == 0) {
        code = itself.flush();
    } else {
        const FileDescriptor file(::open(name.constData(), O_RDONLY | O_CLOEXEC));
        code = file.isOpen() ? file.flush() : errno;
    }
    const FolderHandle folder(QFile::encodeName(QFileInfo(path).absolutePath()));
    if (code == 0)
        code = folder.error() != 0 ? folder.error() : folder.flush();
    return code == 0 ? Result<void, FileError>() : fail(FileError::fromErrno(path, code));
}

} // namespace orlenta::base
