#pragma once

#include <span>

namespace orlenta::base {

/// Owns an open file descriptor. Operations return 0 or an errno value.
class FileDescriptor final {
public:
    explicit FileDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    ~FileDescriptor();
    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int get() const { return m_descriptor; }

    /// Writes all bytes at the current position. Never reports success for a short write, the first sign of a full
    /// disk.
    [[nodiscard]] int write(std::span<const char> bytes) const;
    /// Flushes the content to disk. Returns 0 if the file system doesn't support flushing.
    [[nodiscard]] int flush() const;
    [[nodiscard]] int close();

private:
    int m_descriptor;
};

} // namespace orlenta::base
