#pragma once

#include <optional>

#include "base/Result.h"
#include "controller/document/Document.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/generation/GenerationRequestContext.h"

namespace orlenta::controller {

class LineRuntime;
class LineWaveforms;
class MediaFiles;
class UndoHistory;

enum class GenerationState { Idle, Generating };

/// The audio of lines: takes, recordings and the generating mark. Files are never removed, so that undo can bring a
/// take back. Main thread.
class TakeEditing final {
public:
    struct Parts {
        Document &document;
        UndoHistory &history;
        LineRuntime &runtime;
        MediaFiles &media;
        LineWaveforms &waveforms;
    };

    explicit TakeEditing(const Parts &parts) : m_parts(parts) {}

    /// The name of a line's clip: its voice, its first words and its number in its tab.
    [[nodiscard]] QString clipName(const model::ProjectLine &line) const;
    /// The name of a clip that joins these lines of the active tab.
    [[nodiscard]] QString continuousClipName(const QList<model::LineId> &lines) const;
    /// What a take of the line made now would record; none for a line without a voice id.
    [[nodiscard]] std::optional<GenerationRequestContext> generationContext(const model::ProjectLine &line) const;

    void setGenerating(GenerationState state, const model::LineId &id);
    /// Copies generated audio into the project and makes it the line's new, active take; the undo step is "Generate"
    /// for the first take and "Regenerate" for later ones. A failure goes to the controller's spotError.
    void installGeneratedAudio(const QString &path, const model::LineId &id,
                               const std::optional<GenerationRequestContext> &context);
    void switchTake(const model::LineId &id, const model::TakeId &takeId);
    /// Takes the take in use off the line.
    void deleteGeneratedAudio(const model::LineId &id);
    /// Leaves the line without a recording in use.
    void deleteDirectionAudio(const model::LineId &id);

private:
    [[nodiscard]] base::Result<QString, ProjectControllerError> storeAudio(const QString &path, const QString &name);
    void useGeneratedFile(const model::LineId &id, const QUrl &url);
    [[nodiscard]] model::Take newTake(const QString &filename, const model::ProjectLine &line,
                                      const std::optional<GenerationRequestContext> &context) const;

    Parts m_parts;
};

} // namespace orlenta::controller
