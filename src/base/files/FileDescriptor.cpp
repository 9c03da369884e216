#include "base/files/FileDescriptor.h"

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace orlenta::base {

FileDescriptor::~FileDescriptor() {
    static_cast<void>(close());
}

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept {
    if (this != &other) {
        static_cast<void>(close());
        m_descriptor = std::exchange(other.m_descriptor, -1);
    }
    return *this;
}

int FileDescriptor::write(std::span<const char> bytes) const {
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return written == 0 ? ENOSPC : errno;
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return 0;
}

int FileDescriptor::flush() const {
    if (::fsync(m_descriptor) == 0)
        return 0;
    const bool isUnsupported = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
    return isUnsupported ? 0 : errno;
}

int FileDescriptor::close() {
    if (!isOpen())
        return 0;
    const int result = ::close(std::exchange(m_descriptor, -1));
    // On Linux the descriptor is closed even after EINTR.
    return result == 0 || errno == EINTR ? 0 : errno;
}

} // namespace orlenta::base
