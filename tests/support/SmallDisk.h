#pragma once

#include <optional>

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include "support/FileSizeLimit.h"

namespace orlenta::testing {

/// An in-memory file system of the given size, visible to this process only. If the process may not mount one, a folder
/// in which no file can grow beyond that size.
class SmallDisk final {
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isMounted() const { return !m_limit.has_value(); }
    /// From now on nothing can be written to this folder of it.
    [[nodiscard]] bool makeReadOnly(const QString &folder);
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    std::optional<FileSizeLimit> m_limit;
    /// The folder whose permissions say so, where nothing is mounted.
    QString m_readOnly;
};

} // namespace orlenta::testing
