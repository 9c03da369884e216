#include "base/files/FolderHandle.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace orlenta::base {
namespace {

// A folder that we may write to but not list opens only with O_PATH. It can't be locked or flushed then.
int openFolder(const QByteArray &path) {
    const int readable = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (readable >= 0 || (errno != EACCES && errno != EPERM))
        return readable;
    return ::open(path.constData(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

bool isRefusal(int code) {
    constexpr std::array refusals{EINVAL, ENOSYS, EOPNOTSUPP, EACCES, EPERM, EBADF, EISDIR};
    return std::ranges::find(refusals, code) != refusals.end();
}

} // namespace

FolderHandle::FolderHandle(const QByteArray &path)
    : m_descriptor(openFolder(path)), m_error(m_descriptor.isOpen() ? 0 : errno) {}

int FolderHandle::flush() const {
    return ::fsync(m_descriptor.get()) == 0 || isRefusal(errno) ? 0 : errno;
}

FolderLock::FolderLock(const FolderHandle &folder) : m_folder(folder) {
    while (::flock(m_folder.get(), LOCK_EX) != 0 && errno == EINTR) {
    }
}

FolderLock::~FolderLock() {
    ::flock(m_folder.get(), LOCK_UN);
}

} // namespace orlenta::base
