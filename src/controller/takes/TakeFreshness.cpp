#include "controller/takes/TakeFreshness.h"

#include "tags/CharacterCount.h"

namespace orlenta::controller {

TakeChange changeSinceTake(const model::Project &project, const model::ProjectLine &line, const model::Take &take) {
    // A spoken direction replaces the text, and a take from an import has no length.
    const bool hasText = take.characterCount > 0 && take.settingsSnapshot.directionMode == model::DirectionMode::Text;
    if (hasText && take.characterCount != tags::characterCount(line.text))
        return TakeChange::Text;
    if (!take.voiceId.isNull() && line.voiceId && *line.voiceId != take.voiceId)
        return TakeChange::Voice;
    model::ProjectLineSettings settings = project.effectiveSettings(line);
    // Without a recording, the line is spoken from its text in either mode.
    if (!line.activeSourceId)
        settings.directionMode = take.settingsSnapshot.directionMode;
    return settings == take.settingsSnapshot ? TakeChange::None : TakeChange::Settings;
}

} // namespace orlenta::controller
