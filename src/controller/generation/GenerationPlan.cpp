#include "controller/generation/GenerationPlan.h"

#include <algorithm>

#include "controller/casting/VoiceCasting.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "speech/synthesis/SpeechModel.h"
#include "speech/synthesis/TTSRequest.h"
#include "tags/TagParser.h"

namespace orlenta::controller {
namespace {

/// Counting takes some 20 ns for each of these.
constexpr qsizetype largestCount = 100'000;

} // namespace

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

std::optional<TextOverrun> textOverrun(const ProjectController &controller, const model::ProjectLine &line) {
    const model::ProjectLineSettings settings = controller.project().effectiveSettings(line);
    const speech::SpeechModel &model = speech::SpeechModel::forKey(settings.model);
    // A perceived character has at least one code unit.
    if (line.text.size() <= model.characterLimit)
        return std::nullopt;
    const bool speaksRecording = settings.directionMode == model::DirectionMode::Voice &&
                                 !controller.runtime().state(line.lineId).directionAudioURL.isEmpty();
    const QString counted = line.text.left(largestCount);
    const int count = speech::perceivedCharacters(model.understandsTags ? counted : tags::strippingTags(counted));
    if (speaksRecording || count <= model.characterLimit)
        return std::nullopt;
    return TextOverrun{count, counted.size() < line.text.size(), model.characterLimit};
}

bool canGenerate(const ProjectController &controller, const model::LineId &id) {
    return controller.voices().projectVoiceFor(id) != nullptr;
}

} // namespace orlenta::controller
