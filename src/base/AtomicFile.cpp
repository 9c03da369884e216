#include "base/AtomicFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace orlenta::base {
namespace {

constexpr qsizetype pieceSize = 16 * 1024;

/// Owns a descriptor and the temporary file behind it until the rename has made it the real one.
class TemporaryFile final {
public:
    explicit TemporaryFile(const QString &path) : m_path(QFile::encodeName(path)) {}
    ~TemporaryFile() {
        close();
        if (!m_path.isEmpty())
            ::unlink(m_path.constData());
    }
    TemporaryFile(const TemporaryFile &) = delete;
    TemporaryFile &operator=(const TemporaryFile &) = delete;

    bool create() {
        ::unlink(m_path.constData());
        m_descriptor = ::open(m_path.constData(), O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_WRONLY, 0600);
        return m_descriptor >= 0;
    }
    [[nodiscard]] int descriptor() const { return m_descriptor; }
    [[nodiscard]] const QByteArray &path() const { return m_path; }
    int close() {
        const int result = m_descriptor >= 0 ? ::close(m_descriptor) : 0;
        m_descriptor = -1;
        return result;
    }
    void keep() { m_path.clear(); }

private:
    QByteArray m_path;
    int m_descriptor = -1;
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

mode_t modeFor(const QByteArray &target) {
    struct stat existing {};
    if (::stat(target.constData(), &existing) == 0)
        return existing.st_mode & 07777;
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0644 & ~mask;
}

int syncFolderOf(const QString &path) {
    const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return errno;
    const int code = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    return code;
}

} // namespace

Result<void, FileError> writeAtomically(const QString &path, const QByteArray &data) {
    const QByteArray target = QFile::encodeName(path);
    TemporaryFile temporary(path + QStringLiteral(".tmp"));
    if (!temporary.create())
        return fail(FileError::fromErrno(path, errno));
    if (const int code = writeInPieces(temporary.descriptor(), data))
        return fail(FileError::fromErrno(path, code));
    struct stat written {};
    if (::fstat(temporary.descriptor(), &written) != 0)
        return fail(FileError::fromErrno(path, errno));
    if (written.st_size != data.size())
        return fail(FileError::withReason(path, QStringLiteral("The file was not written completely.")));
    if (::fchmod(temporary.descriptor(), modeFor(target)) != 0 || ::fsync(temporary.descriptor()) != 0 ||
        temporary.close() != 0 || ::rename(temporary.path().constData(), target.constData()) != 0)
        return fail(FileError::fromErrno(path, errno));
    temporary.keep();
    if (const int code = syncFolderOf(path))
        return fail(FileError::fromErrno(path, code));
    return {};
}

Result<void, FileError> syncToDisk(const QString &path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return fail(FileError::fromErrno(path, errno));
    const int code = ::fsync(descriptor) == 0 ? 0 : errno;
    ::close(descriptor);
    if (code != 0)
        return fail(FileError::fromErrno(path, code));
    if (const int folderCode = syncFolderOf(path))
        return fail(FileError::fromErrno(path, folderCode));
    return {};
}

Result<QByteArray, FileError> readWholeFile(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(FileError::withReason(path, file.errorString()));
    QByteArray data = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return fail(FileError::withReason(path, file.errorString()));
    return data;
}

} // namespace orlenta::base
