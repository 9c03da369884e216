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

/// The audio of lines: takes, recordings and the generating mark. Never deletes a take's file, so undo can bring the
/// take back. Main thread.
class TakeEditing final {
public:
    explicit TakeEditing(ProjectController &controller) : m_controller(controller) {}

    /// The name of a line's clip: voice, first words, and number in the tab.
    [[nodiscard]] QString clipName(const model::ProjectLine &line) const;
    /// The name of a clip that joins several lines of the active tab.
    [[nodiscard]] QString continuousClipName(const QList<model::LineId> &lines) const;
    /// What a take generated now would record; none if the line has no voice id.
    [[nodiscard]] std::optional<GenerationRequestContext> generationContext(const model::ProjectLine &line) const;

    /// Index of the take in use, or -1. Deleting the take in use leaves a line with takes but none in use. The file of
    /// the take in use may be missing.
    [[nodiscard]] qsizetype indexInUse(const model::ProjectLine &line) const;

    void setGenerating(GenerationState state, const model::LineId &id);
    /// Stores generated audio in the project as the line's new, active take. The undo step is "Generate" for the first
    /// take and "Regenerate" for later ones. On failure, returns the error, also shows it as the controller's
    /// spotError, and leaves the file where it is. If the line is gone by then, does nothing.
    QCoro::Task<std::optional<ProjectControllerError>>
    installGeneratedAudio(QString path, model::LineId id, std::optional<GenerationRequestContext> context);
    void switchTake(const model::LineId &id, const model::TakeId &takeId);
    /// Removes the take in use from the line.
    void deleteGeneratedAudio(const model::LineId &id);
    /// Takes all direction recordings off the line. Their files stay in the project's folder.
    void deleteDirectionAudio(const model::LineId &id);

private:
    void adopt(const QString &path, const model::LineId &id, const std::optional<GenerationRequestContext> &context);
    void useGeneratedFile(const Edit &edit, const model::LineId &id, const QUrl &url) const;
    [[nodiscard]] model::Take newTake(const QString &filename, const model::ProjectLine &line,
                                      const std::optional<GenerationRequestContext> &context) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
