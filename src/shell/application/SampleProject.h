#pragma once

#include <optional>

#include <QtCore/QString>

#include "base/files/FileError.h"
#include "base/Result.h"

namespace orlenta::shell {

/// The project that shows what the application can do. It ships with the application and is worked on as a copy.
class SampleProject final {
public:
    SampleProject() = delete;

    /// The folder that ships with the application; none when the installation lacks it.
    [[nodiscard]] static std::optional<QString> shippedFolder();
    /// Where a copy goes unless the user says otherwise: "Orlenta Sample" in the documents folder.
    [[nodiscard]] static QString defaultDestination();
    /// Copies a project folder, which must not exist at `destination` yet; on a failure nothing is left there.
    static base::Result<void, base::FileError> copy(const QString &source, const QString &destination);
};

} // namespace orlenta::shell
