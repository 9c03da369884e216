#pragma once

#include <QtCore/QUrl>

#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/takes/AudioKind.h"
#include "model/ProjectLine.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// Resolves the bare file names of a project's records to files in its folder. A name never leads out of the folder,
/// neither by its text nor through a symbolic link. Main thread.
class MediaFiles final {
public:
    explicit MediaFiles(const ProjectController &controller) : m_controller(controller) {}

    /// The file's URL, even if the file doesn't exist. Empty without a project folder or for a refused name.
    [[nodiscard]] QUrl takeURL(const model::Take &take) const;
    [[nodiscard]] QUrl recordingURL(const model::SourceRecording &recording) const;
    /// The generated audio to play or export: the file in use, or otherwise the active take's file if it exists.
    [[nodiscard]] QUrl audioURL(const model::ProjectLine &line) const;
    /// Like takeURL(), but empty if the file doesn't exist.
    [[nodiscard]] QUrl existingTakeURL(const model::Take &take) const;
    /// The folder for writing, created if needed.
    [[nodiscard]] base::Result<QString, ProjectControllerError> audioFolder(AudioKind kind) const;
    /// Sets each line's runtime URLs from its records. Missing files give empty URLs.
    void rebuildRuntimeAudio(const Edit &edit) const;
    /// Replaces URLs outside the current folder, such as those of a snapshot taken before a Save As.
    void rebaseRuntimeAudio(const Edit &edit) const;

private:
    class Resolver;

    const ProjectController &m_controller;
};

} // namespace orlenta::controller
