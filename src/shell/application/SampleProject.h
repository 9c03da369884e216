#pragma once

#include <optional>

#include <QtCore/QString>

#include "base/files/FileError.h"
#include "base/Result.h"

namespace orlenta::shell {

/// The sample project. It ships with the application, and the user works on a copy.
class SampleProject final {
public:
    SampleProject() = delete;

    /// The installed folder; none if the installation lacks it.
    [[nodiscard]] static std::optional<QString> shippedFolder();
    /// The default place for the copy: "Orlenta Sample" in the documents folder.
    [[nodiscard]] static QString defaultDestination();
    /// Copies a project folder to `destination`, which must not exist yet. A failed copy leaves nothing behind.
    static base::Result<void, base::FileError> copy(const QString &source, const QString &destination);
};

} // namespace orlenta::shell
