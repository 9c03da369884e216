#pragma once

#include <optional>

#include <QtCore/QList>

#include "model/ProjectLine.h"

namespace orlenta::controller {

class ProjectController;

/// Generate makes a line's first audio, Regenerate a further take.
enum class GenerationKind { Generate, Regenerate };

struct GenerationPlan {
    QList<model::LineId> lines;
    GenerationKind kind = GenerationKind::Generate;
};

/// What generating this line would do. Buttons and menus take their titles from it.
[[nodiscard]] GenerationKind generationKind(const ProjectController &controller, const model::ProjectLine &line);
/// What generating the selection would do: regenerate all selected lines if each has audio, otherwise generate those
/// that have none. In tab order.
[[nodiscard]] GenerationPlan planForSelection(const ProjectController &controller);
/// A text that is longer than its model takes, in user-perceived characters.
struct TextOverrun {
    int count = 0;
    /// The text is so long that only its beginning was counted.
    bool isAtLeast = false;
    int limit = 0;
};

/// Whether generating the line would be refused because of its length. Quick enough for each redraw of a row.
[[nodiscard]] std::optional<TextOverrun> textOverrun(const ProjectController &controller,
                                                     const model::ProjectLine &line);
/// Whether the line has a voice of the project.
[[nodiscard]] bool canGenerate(const ProjectController &controller, const model::LineId &id);

} // namespace orlenta::controller
