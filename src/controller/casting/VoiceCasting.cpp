#include "controller/casting/VoiceCasting.h"

#include <algorithm>

#include "controller/casting/CastPalette.h"
#include "controller/document/Edit.h"
#include "controller/ProjectController.h"

namespace orlenta::controller {

const model::ProjectVoice *VoiceCasting::projectVoiceFor(const model::LineId &id) const {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    return line != nullptr ? m_controller.project().voiceOf(*line) : nullptr;
}

QString VoiceCasting::nextCastColor() {
    const QStringList &palette = castPalette();
    const Edit edit(m_controller);
    return palette.at(edit->nextColorIndex++ % palette.size());
}

model::ProjectVoice VoiceCasting::ensureProjectVoice(const QString &elevenLabsVoiceId, const QString &displayName,
                                                     const QString &castName, const QString &colorHex) {
    if (const model::ProjectVoice *known = findByServiceId(elevenLabsVoiceId))
        return *known;
    const Edit edit(m_controller);
    const model::ProjectVoice voice{model::VoiceId::create(), elevenLabsVoiceId, displayName, castName,
                                    colorHex.isEmpty() ? nextCastColor() : colorHex};
    edit->project.voices.append(voice);
    return voice;
}

void VoiceCasting::assignVoice(const QList<model::LineId> &lines, const ServiceVoice &voice) {
    const auto exists = [this](const model::LineId &id) { return m_controller.state().findLine(id) != nullptr; };
    if (std::none_of(lines.begin(), lines.end(), exists))
        return;
    const Edit edit(m_controller, QStringLiteral("Change Voice"));
    const model::VoiceId voiceId = ensureProjectVoice(voice.elevenLabsVoiceId, voice.name, voice.name, {}).id;
    for (const model::LineId &id : lines)
        edit.updateLine(id, [&voiceId](model::ProjectLine &line) { line.voiceId = voiceId; });
}

const model::ProjectVoice *VoiceCasting::findByServiceId(const QString &elevenLabsVoiceId) const {
    const QList<model::ProjectVoice> &voices = m_controller.project().voices;
    const auto found = std::find_if(voices.begin(), voices.end(), [&](const model::ProjectVoice &voice) {
        return voice.elevenLabsVoiceId == elevenLabsVoiceId;
    });
    return found == voices.end() ? nullptr : &*found;
}

} // namespace orlenta::controller
