#include "controller/generation/GenerationPlan.h"

#include <algorithm>

#include "controller/casting/VoiceCasting.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {

GenerationKind generationKind(const ProjectController &controller, const model::ProjectLine &line) {
    return controller.media().audioURL(line).isEmpty() ? GenerationKind::Generate : GenerationKind::Regenerate;
}

GenerationPlan planForSelection(const ProjectController &controller) {
    QList<model::LineId> selected = controller.selection().selectedLinesInScript();
    const auto hasAudio = [&controller](const model::LineId &id) {
        return generationKind(controller, *controller.lines().find(id)) == GenerationKind::Regenerate;
    };
    if (!selected.isEmpty() && std::all_of(selected.cbegin(), selected.cend(), hasAudio))
        return {selected, GenerationKind::Regenerate};
    selected.removeIf(hasAudio);
    return {selected, GenerationKind::Generate};
}

bool canGenerate(const ProjectController &controller, const model::LineId &id) {
    return controller.voices().projectVoiceFor(id) != nullptr;
}

} // namespace orlenta::controller
