#pragma once

#include <optional>

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include "support/FileSizeLimit.h"

namespace orlenta::testing {

/// A file system of its own with room for so many bytes, in memory, seen by this process alone. Where the system won't
/// let the process mount one, a folder in which no file can grow past that.
class SmallDisk final {
public:
    explicit SmallDisk(qint64 bytes);
    ~SmallDisk();
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    [[nodiscard]] bool isMounted() const { return !m_limit.has_value(); }
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    std::optional<FileSizeLimit> m_limit;
};

} // namespace orlenta::testing
