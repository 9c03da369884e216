#pragma once

#include <optional>

#include <qcoro/qcorotask.h>
#include <QtCore/QUrl>

#include "controller/document/ProjectControllerError.h"
#include "controller/generation/GenerationRequestContext.h"
#include "model/ProjectLine.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

enum class GenerationState { Idle, Generating };

/// The audio of lines: takes, recordings and the generating mark. Files are never removed, so that undo can bring a
/// take back. Main thread.
class TakeEditing final {
public:
    explicit TakeEditing(ProjectController &controller) : m_controller(controller) {}

    /// The name of a line's clip: its voice, its first words and its number in its tab.
    [[nodiscard]] QString clipName(const model::ProjectLine &line) const;
    /// The name of a clip that joins these lines of the active tab.
    [[nodiscard]] QString continuousClipName(const QList<model::LineId> &lines) const;
    /// What a take of the line made now would record; none for a line without a voice id.
    [[nodiscard]] std::optional<GenerationRequestContext> generationContext(const model::ProjectLine &line) const;

    /// Place of the take in use among the line's takes, or -1: after its deletion a line has takes but none in use. The
    /// file of the one in use may be missing.
    [[nodiscard]] qsizetype indexInUse(const model::ProjectLine &line) const;

    void setGenerating(GenerationState state, const model::LineId &id);
    /// Brings generated audio into the project and makes it the line's new, active take; the undo step is "Generate"
    /// for the first take and "Regenerate" for later ones. A failure is returned and goes to the controller's
    /// spotError; the file stays where it is. A line that has gone by then ends it without a word.
    QCoro::Task<std::optional<ProjectControllerError>>
    installGeneratedAudio(QString path, model::LineId id, std::optional<GenerationRequestContext> context);
    void switchTake(const model::LineId &id, const model::TakeId &takeId);
    /// Takes the take in use off the line.
    void deleteGeneratedAudio(const model::LineId &id);
    /// Leaves the line without a recording in use.
    void deleteDirectionAudio(const model::LineId &id);

private:
    void adopt(const QString &path, const model::LineId &id, const std::optional<GenerationRequestContext> &context);
    void useGeneratedFile(const Edit &edit, const model::LineId &id, const QUrl &url) const;
    [[nodiscard]] model::Take newTake(const QString &filename, const model::ProjectLine &line,
                                      const std::optional<GenerationRequestContext> &context) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
