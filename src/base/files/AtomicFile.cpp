#include "base/files/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace orlenta::base {
namespace {

constexpr qsizetype pieceSize = 16 * 1024;

/// A folder held open for the length of one write. Its lock keeps another writer from taking away a temporary file that
/// is still being filled; a file system that can't lock leaves that to chance.
class HeldFolder final {
public:
    explicit HeldFolder(const QByteArray &path)
        : m_descriptor(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        while (isOpen() && ::flock(m_descriptor, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~HeldFolder() {
        if (isOpen())
            ::close(m_descriptor);
    }
    HeldFolder(const HeldFolder &) = delete;
    HeldFolder &operator=(const HeldFolder &) = delete;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int sync() const { return ::fsync(m_descriptor) == 0 ? 0 : errno; }

private:
    int m_descriptor;
};

/// Owns a descriptor and the temporary file behind it until the rename has made it the real one.
class TemporaryFile final {
public:
    explicit TemporaryFile(const QByteArray &path) : m_path(path) {}
    ~TemporaryFile() {
        close();
        if (m_isOurs)
            ::unlink(m_path.constData());
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    bool create(mode_t mode) {
        ::unlink(m_path.constData());
        m_descriptor = ::open(m_path.constData(), O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_WRONLY, mode);
        m_isOurs = m_descriptor >= 0;
        return m_isOurs;
    }
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    // The descriptor is gone even if the call was interrupted, and the data was flushed before.
    int close() {
        const int result = m_descriptor >= 0 ? ::close(m_descriptor) : 0;
        m_descriptor = -1;
        return result != 0 && errno == EINTR ? 0 : result;
    }
    bool becomes(const QByteArray &target) {
        m_isOurs = ::rename(m_path.constData(), target.constData()) != 0;
        return !m_isOurs;
    }

private:
    QByteArray m_path;
    int m_descriptor = -1;
    bool m_isOurs = false;
};

/// Where a write really goes.
struct WritePlace {
    QByteArray folder;
    QByteArray target;
    QByteArray temporary;

    explicit WritePlace(const QString &path) {
        const QFileInfo named(path);
        const QString linked = named.isSymLink() ? named.canonicalFilePath() : QString();
        const QFileInfo real(linked.isEmpty() ? path : linked);
        folder = QFile::encodeName(real.absolutePath());
        target = QFile::encodeName(real.absoluteFilePath());
        temporary = folder + '/' + temporaryName(QFile::encodeName(real.fileName()));
    }

private:
    // A name that is as long as the file system allows leaves no room for the suffix.
    static QByteArray temporaryName(QByteArray name) {
        const QByteArray suffix(".tmp");
        qsizetype length = std::min<qsizetype>(name.size(), NAME_MAX - suffix.size());
        while (length > 0 && length < name.size() && (static_cast<unsigned char>(name.at(length)) & 0xC0) == 0x80)
            --length;
        name.truncate(length);
        return name + suffix;
    }
};

// A short write is how a full disk shows itself, so pieces stay small and every shortfall counts as a failure.
int writeInPieces(int descriptor, const QByteArray &data) {
    qsizetype done = 0;
    while (done < data.size()) {
        const auto piece = static_cast<size_t>(std::min(pieceSize, data.size() - done));
        const ssize_t written = ::write(descriptor, data.constData() + done, piece);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return errno;
        if (static_cast<size_t>(written) != piece)
            return ENOSPC;
        done += written;
    }
    return 0;
}

std::optional<mode_t> modeOf(const QByteArray &target) {
    struct stat existing {};
    return ::stat(target.constData(), &existing) == 0 ? std::optional<mode_t>(existing.st_mode & 07777) : std::nullopt;
}

} // namespace

Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data) {
    const WritePlace place(path);
    const HeldFolder folder(place.folder);
    if (!folder.isOpen())
        return fail(FileError::fromErrno(path, errno));
    const std::optional<mode_t> oldMode = modeOf(place.target);
    TemporaryFile temporary(place.temporary);
    // For a new file the kernel takes the umask off; asking for the umask would mean setting it for all threads.
    if (!temporary.create(oldMode ? 0600 : 0644))
        return fail(FileError::fromErrno(path, errno));
    if (const int code = writeInPieces(temporary.descriptor(), data))
        return fail(FileError::fromErrno(path, code));
    struct stat written {};
    if (::fstat(temporary.descriptor(), &written) != 0)
        return fail(FileError::fromErrno(path, errno));
    if (written.st_size != data.size())
        return fail(FileError::withReason(path, QStringLiteral("The file was not written completely.")));
    if ((oldMode && ::fchmod(temporary.descriptor(), *oldMode) != 0) || ::fsync(temporary.descriptor()) != 0 ||
        temporary.close() != 0 || !temporary.becomes(place.target))
        return fail(FileError::fromErrno(path, errno));
    if (const int code = folder.sync())
        return fail(FileError::fromErrno(path, code));
    return {};
}

void removeStaleTemporary(const QString &path) {
    const WritePlace place(path);
    const HeldFolder folder(place.folder);
    if (folder.isOpen())
        ::unlink(place.temporary.constData());
}

Result<void, FileError> syncToDisk(const QString &path) {
    const QByteArray encoded = QFile::encodeName(path);
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    for (const QByteArray &item : {encoded, folder}) {
        const int descriptor = ::open(item.constData(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0)
            return fail(FileError::fromErrno(path, errno));
        const int code = ::fsync(descriptor) == 0 ? 0 : errno;
        ::close(descriptor);
        if (code != 0)
            return fail(FileError::fromErrno(path, code));
    }
    return {};
}

Result<QByteArray, FileError> readWholeFile(const QString &path) {
    // Without O_NONBLOCK the open itself would wait for a pipe's other end.
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return fail(FileError::fromErrno(path, errno));
    QFile file;
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        const int code = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        ::close(descriptor);
        return fail(FileError::fromErrno(path, code));
    }
    if (!file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return fail(FileError::withReason(path, file.errorString()));
    QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(FileError::withReason(path, file.errorString()));
    return data;
}

} // namespace orlenta::base
