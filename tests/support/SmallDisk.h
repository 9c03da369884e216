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
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;
    std::optional<FileSizeLimit> m_limit;
};

} // namespace orlenta::testing
