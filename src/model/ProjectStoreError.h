#pragma once

#include <cstdint>
#include <optional>
#include <variant>

#include <QtCore/QString>

#include "base/files/FileError.h"

namespace orlenta::model {

/// Why a project couldn't be opened, created or saved, with the messages for the user.
class ProjectStoreError final {
public:
    struct NewerSchemaVersion {
        std::int64_t version;
    };
    struct CorruptedFile {
        QString detail;
    };
    struct ProjectFileNotFound {};

    using Kind = std::variant<NewerSchemaVersion, CorruptedFile, ProjectFileNotFound, base::FileError>;

    ProjectStoreError(Kind kind) : m_kind(std::move(kind)) {}

    [[nodiscard]] const Kind &kind() const { return m_kind; }
    /// The main text of the alert.
    [[nodiscard]] QString description() const;
    /// The detail below it, if any.
    [[nodiscard]] std::optional<QString> failureReason() const;

private:
    Kind m_kind;
};

} // namespace orlenta::model
