#pragma once

#include <span>

namespace orlenta::base {

/// Owns an open file descriptor. Operations give 0 or an errno value.
class FileDescriptor final {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

    /// Writes all of it at the file's position. A full disk first shows as a short write, so that is never a success.
    [[nodiscard]] int write(std::span<const char> bytes) const;
    /// Forces the content to disk. A file system that can't flush at all counts as flushed; a flush that fails doesn't.
    [[nodiscard]] int flush() const;
    [[nodiscard]] int close();

private:
    int m_descriptor;
};

} // namespace orlenta::base
