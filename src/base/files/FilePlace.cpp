#include "base/files/FilePlace.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>

#include <QtCore/QFile>

namespace orlenta::base {
namespace {

constexpr int mostLinks = 40;

QByteArray bytesOf(const std::filesystem::path &path) {
    return QByteArray::fromStdString(path.string());
}

} // namespace

FilePlace::FilePlace(const QByteArray &folder, QByteArray name) : m_folder(folder), m_name(std::move(name)) {}

Result<FilePlace, FileError> FilePlace::find(const QString &path) {
    std::error_code ignored;
    std::filesystem::path real = std::filesystem::absolute(QFile::encodeName(path).toStdString(), ignored);
    for (int links = 0; std::filesystem::is_symlink(real, ignored); ++links) {
        if (links == mostLinks)
            return fail(FileError::fromErrno(path, ELOOP));
        real = real.parent_path() / std::filesystem::read_symlink(real, ignored);
    }
    FilePlace place(bytesOf(real.parent_path()), bytesOf(real.filename()));
    if (const int code = place.inspect())
        return fail(FileError::fromErrno(path, code));
    return place;
}

int FilePlace::inspect() {
    if (m_folder.error() != 0)
        return m_folder.error();
    struct stat existing {};
    if (::fstatat(m_folder.get(), m_name.constData(), &existing, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? 0 : errno;
    if (!S_ISREG(existing.st_mode))
        return S_ISDIR(existing.st_mode) ? EISDIR : EINVAL;
    m_mode = existing.st_mode & 07777;
    return 0;
}

QByteArray FilePlace::temporaryName() const {
    const QByteArray suffix(".tmp");
    qsizetype length = std::min<qsizetype>(m_name.size(), NAME_MAX - suffix.size());
    // Don't cut a UTF-8 character in half; some file systems refuse that.
    while (length > 0 && length < m_name.size() && (static_cast<unsigned char>(m_name.at(length)) & 0xC0) == 0x80)
        --length;
    return m_name.first(length) + suffix;
}

void FilePlace::applyMode(const FileDescriptor &file) const {
    // Only file systems without real permissions refuse this, so there is nothing to preserve.
    if (m_mode)
        static_cast<void>(::fchmod(file.get(), *m_mode) == 0);
}

int FilePlace::take(int fromFolder, const QByteArray &fromName) const {
    return ::renameat(fromFolder, fromName.constData(), m_folder.get(), m_name.constData()) == 0 ? 0 : errno;
}

} // namespace orlenta::base
