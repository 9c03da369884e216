#pragma once

#include <QtCore/QUrl>

#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/takes/AudioKind.h"
#include "model/ProjectLine.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// How the bare file names of a project's records become files in its folder. A name never leads out of the folder,
/// neither by its text nor through a symbolic link. Main thread.
class MediaFiles final {
public:
    explicit MediaFiles(const ProjectController &controller) : m_controller(controller) {}

    /// The file's URL, whether or not the file exists; empty without a project folder or for a refused name.
    [[nodiscard]] QUrl takeURL(const model::Take &take) const;
    [[nodiscard]] QUrl recordingURL(const model::SourceRecording &recording) const;
    /// The generated audio that a line hands on: the one in use, or else its active take's file if that exists.
    [[nodiscard]] QUrl audioURL(const model::ProjectLine &line) const;
    /// As takeURL(), but empty when the file doesn't exist.
    [[nodiscard]] QUrl existingTakeURL(const model::Take &take) const;
    /// The folder for writing, made when needed.
    [[nodiscard]] base::Result<QString, ProjectControllerError> audioFolder(AudioKind kind) const;
    /// Sets each line's runtime URLs from its records; a file that doesn't exist gives none.
    void rebuildRuntimeAudio(const Edit &edit) const;
    /// Replaces the URLs that don't lie in the present folder, as those of a snapshot taken before a Save As.
    void rebaseRuntimeAudio(const Edit &edit) const;

private:
    class Resolver;

    const ProjectController &m_controller;
};

} // namespace orlenta::controller
