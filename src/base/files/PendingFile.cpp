#include "base/files/PendingFile.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace orlenta::base {
namespace {

/// Opens a temporary file that already exists. A writer holds its lock.
FileDescriptor openExisting(const FilePlace &place) {
    constexpr int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    return FileDescriptor(::openat(place.folder().get(), place.temporaryName().constData(), flags));
}

bool isBeingWritten(const FileDescriptor &file) {
    return file.isOpen() && ::flock(file.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

void waitUntilWritten(const FileDescriptor &file) {
    while (::flock(file.get(), LOCK_SH) != 0 && errno == EINTR) {
    }
}

void removeTemporary(const FilePlace &place) {
    ::unlinkat(place.folder().get(), place.temporaryName().constData(), 0);
}

FileDescriptor createTemporary(const FilePlace &place) {
    // The kernel applies the umask. Reading the umask ourselves would mean setting it for all threads.
    const mode_t mode = place.isTaken() ? 0600 : 0644;
    constexpr int flags = O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_RDWR;
    return FileDescriptor(::openat(place.folder().get(), place.temporaryName().constData(), flags, mode));
}

} // namespace

PendingFile::PendingFile(QString path, FilePlace place) : m_path(std::move(path)), m_place(std::move(place)) {}

PendingFile::PendingFile(PendingFile &&other) noexcept
    : m_path(std::move(other.m_path)), m_place(std::move(other.m_place)), m_descriptor(std::move(other.m_descriptor)),
      m_isOurs(std::exchange(other.m_isOurs, false)) {}

PendingFile::~PendingFile() {
    if (m_isOurs)
        removeTemporary(m_place);
}

Result<PendingFile, FileError> PendingFile::create(const QString &path) {
    auto place = FilePlace::find(path);
    if (!place)
        return fail(place.error());
    PendingFile file(path, std::move(place).value());
    if (const int code = file.open())
        return fail(FileError::fromErrno(path, code));
    return file;
}

int PendingFile::open() {
    while (true) {
        FileDescriptor existing;
        {
            // Until a new temporary file is locked, nobody else may mistake it for a leftover.
            const FolderLock lock(m_place.folder());
            existing = openExisting(m_place);
            if (!isBeingWritten(existing)) {
                removeTemporary(m_place);
                m_descriptor = createTemporary(m_place);
                m_isOurs = m_descriptor.isOpen();
                if (!m_isOurs)
                    return errno;
                ::flock(m_descriptor.get(), LOCK_EX | LOCK_NB);
                return 0;
            }
        }
        waitUntilWritten(existing);
    }
}

Result<void, FileError> PendingFile::commit(qint64 size, Flush flush) {
    struct stat written {};
    if (::fstat(m_descriptor.get(), &written) != 0)
        return fail(FileError::fromErrno(m_path, errno));
    if (written.st_size != size)
        return fail(FileError::withReason(m_path, QStringLiteral("The file was not written completely.")));
    m_place.applyMode(m_descriptor);
    int code = flush == Flush::ToDisk ? m_descriptor.flush() : 0;
    if (code == 0)
        code = takePlace();
    if (code == 0 && flush == Flush::ToDisk)
        code = m_place.folder().flush();
    return code == 0 ? Result<void, FileError>() : fail(FileError::fromErrno(m_path, code));
}

int PendingFile::takePlace() {
    // Closing releases the file's own lock, so hold the folder's until the rename is done.
    const FolderLock lock(m_place.folder());
    int code = m_descriptor.close();
    if (code == 0)
        code = m_place.take(m_place.folder().get(), m_place.temporaryName());
    if (code != 0)
        removeTemporary(m_place);
    m_isOurs = false;
    return code;
}

void removeStaleTemporary(const QString &path) {
    const auto place = FilePlace::find(path);
    if (!place)
        return;
    const FolderLock lock(place->folder());
    if (!isBeingWritten(openExisting(place.value())))
        removeTemporary(place.value());
}

} // namespace orlenta::base
