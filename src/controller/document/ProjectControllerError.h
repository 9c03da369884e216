#pragma once

#include <optional>
#include <variant>

#include <QtCore/QString>
#include <QtCore/QUrl>

#include "base/files/FileError.h"
#include "controller/takes/AudioKind.h"
#include "model/ProjectStoreError.h"

namespace orlenta::controller {

/// Why an operation on an open project failed, with the messages for the user.
class ProjectControllerError final {
public:
    struct AudioSourceMissing {
        QUrl url;
    };
    struct AudioFolderUnavailable {
        AudioKind kind;
    };
    struct SaveAsMediaCopyFailed {
        QUrl source;
        QUrl destination;
        base::FileError underlying;
    };
    struct SaveAsReferencedAudioMissing {
        QUrl url;
    };
    struct SaveAsLinkedFileRejected {
        QUrl url;
    };
    struct SaveAsNestedDestination {
        QUrl url;
    };
    struct MediaFolderLinked {
        QUrl url;
    };
    struct ProjectNotBacked {};
    struct PronunciationSelfImport {};

    using Kind =
        std::variant<AudioSourceMissing, AudioFolderUnavailable, SaveAsMediaCopyFailed, SaveAsReferencedAudioMissing,
                     SaveAsLinkedFileRejected, SaveAsNestedDestination, MediaFolderLinked, ProjectNotBacked,
                     PronunciationSelfImport, model::ProjectStoreError, base::FileError>;

    ProjectControllerError(Kind kind) : m_kind(std::move(kind)) {}

    [[nodiscard]] const Kind &kind() const { return m_kind; }
    /// The main text of the alert.
    [[nodiscard]] QString description() const;
    /// The detail below it, if any.
    [[nodiscard]] std::optional<QString> failureReason() const;

private:
    Kind m_kind;
};

} // namespace orlenta::controller
