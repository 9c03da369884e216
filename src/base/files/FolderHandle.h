#pragma once

#include <QtCore/QByteArray>

#include "base/files/FileDescriptor.h"

namespace orlenta::base {

/// An open folder, so that a series of operations acts on the same folder even if it is renamed meanwhile. Any thread.
class FolderHandle final {
public:
    explicit FolderHandle(const QByteArray &path);

    /// 0, or the errno value of the failed open.
    [[nodiscard]] int error() const { return m_error; }
    [[nodiscard]] int get() const { return m_descriptor.get(); }

    /// Flushes the folder's entries to disk. Returns 0 or an errno value; also 0 if the file system refuses to flush
    /// folders, as some network and FUSE file systems do.
    [[nodiscard]] int flush() const;

private:
    FileDescriptor m_descriptor;
    int m_error = 0;
};

/// Holds the folder's advisory lock against other threads and processes; the constructor waits for it. Does nothing on
/// a file system without locks.
class FolderLock final {
public:
    explicit FolderLock(const FolderHandle &folder);
    ~FolderLock();
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

private:
    const FolderHandle &m_folder;
};

} // namespace orlenta::base
