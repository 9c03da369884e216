#pragma once

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
/// Whether the line has a voice of the project.
[[nodiscard]] bool canGenerate(const ProjectController &controller, const model::LineId &id);

} // namespace orlenta::controller
