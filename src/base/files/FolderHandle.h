#pragma once

#include <QtCore/QByteArray>

#include "base/files/FileDescriptor.h"

namespace orlenta::base {

/// A folder held open, so that what is done in it stays together even when it is renamed meanwhile. Any thread.
class FolderHandle final {
public:
    explicit FolderHandle(const QByteArray &path);

    /// 0, or why the folder could not be opened.
    [[nodiscard]] int error() const { return m_error; }
    [[nodiscard]] int get() const { return m_descriptor.get(); }

    /// Forces the folder's entries to disk. Some network and FUSE file systems refuse to flush a folder; that counts as
    /// flushed, since nobody can do better there. Otherwise 0 or an errno value.
    [[nodiscard]] int flush() const;

private:
    FileDescriptor m_descriptor;
    int m_error = 0;
};

/// Keeps every other holder of the folder's lock out, in whatever thread or process; waits for its turn. A file system
/// that can't lock leaves it to chance.
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
