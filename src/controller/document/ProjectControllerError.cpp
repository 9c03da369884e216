#include "controller/document/ProjectControllerError.h"

namespace orlenta::controller {
namespace {

struct ControllerErrorWords {
    QString operator()(const ProjectControllerError::AudioSourceMissing &error) const {
        return QStringLiteral("The audio file could not be found at %1.").arg(error.url.toLocalFile());
    }
    QString operator()(const ProjectControllerError::AudioFolderUnavailable &) const {
        return QStringLiteral("The project audio folder could not be resolved.");
    }
    QString operator()(const ProjectControllerError::SaveAsMediaCopyFailed &) const {
        return QStringLiteral("Save Project As could not copy the project's audio files.");
    }
    QString operator()(const ProjectControllerError::SaveAsReferencedAudioMissing &error) const {
        return QStringLiteral("Save Project As could not find a referenced audio file at %1.")
            .arg(error.url.toLocalFile());
    }
    QString operator()(const ProjectControllerError::SaveAsLinkedFileRejected &error) const {
        return QStringLiteral(
                   "Save Project As stopped at \"%1\": it is a link to a file outside the project. Replace it "
                   "with a real audio file and try again.")
            .arg(error.url.fileName());
    }
    QString operator()(const ProjectControllerError::SaveAsNestedDestination &) const {
        return QStringLiteral("Save Project As can't use that location: it is inside the project being copied (or "
                              "contains it). Choose a location outside the current project folder.");
    }
    QString operator()(const ProjectControllerError::MediaFolderLinked &error) const {
        return QStringLiteral("The project's \"%1\" folder is a link to a location outside the project, so audio can't "
                              "be stored there. Replace it with a real folder and try again.")
            .arg(error.url.fileName());
    }
    QString operator()(const ProjectControllerError::ProjectNotBacked &) const {
        return QStringLiteral("This project has not been saved to a .orl folder yet.");
    }
    QString operator()(const ProjectControllerError::PronunciationSelfImport &) const {
        return QStringLiteral("Choose a different project. This is the project you are editing.");
    }
    QString operator()(const model::ProjectStoreError &error) const { return error.description(); }
    QString operator()(const base::FileError &error) const { return error.description(); }
};

} // namespace

QString ProjectControllerError::description() const {
    return std::visit(ControllerErrorWords{}, m_kind);
}

std::optional<QString> ProjectControllerError::failureReason() const {
    if (const auto *copy = std::get_if<SaveAsMediaCopyFailed>(&m_kind))
        return QStringLiteral("Copying %1 failed: %2").arg(copy->source.fileName(), copy->underlying.description());
    if (const auto *store = std::get_if<model::ProjectStoreError>(&m_kind))
        return store->failureReason();
    return std::nullopt;
}

} // namespace orlenta::controller
