#include "controller/casting/VoiceCasting.h"

#include <algorithm>

#include "controller/casting/CastPalette.h"
#include "controller/document/UndoHistory.h"

namespace orlenta::controller {

VoiceCasting::VoiceCasting(Document &document, UndoHistory &history) : m_document(document), m_history(history) {}

const model::ProjectVoice *VoiceCasting::projectVoiceFor(const model::LineId &id) const {
    const model::ProjectLine *line = m_document.findLine(id);
    return line != nullptr ? m_document.project().voiceOf(*line) : nullptr;
}

QString VoiceCasting::nextCastColor() {
    const QStringList &palette = castPalette();
    const int index = m_document.nextColorIndex();
    m_document.setNextColorIndex(index + 1, EditKey());
    return palette.at(index % palette.size());
}

model::ProjectVoice VoiceCasting::ensureProjectVoice(const QString &elevenLabsVoiceId, const QString &displayName,
                                                     const QString &castName, const QString &colorHex) {
    if (const model::ProjectVoice *known = findByServiceId(elevenLabsVoiceId))
        return *known;
    const Document::Change change(m_document);
    const model::ProjectVoice voice{model::VoiceId::create(), elevenLabsVoiceId, displayName, castName, colorHex};
    m_document.edit(EditKey()).voices.append(voice);
    m_document.commitChange(EditKey());
    return voice;
}

model::ProjectVoice VoiceCasting::castInNextColor(const QString &elevenLabsVoiceId, const QString &displayName,
                                                  const QString &castName) {
    if (const model::ProjectVoice *known = findByServiceId(elevenLabsVoiceId))
        return *known;
    return ensureProjectVoice(elevenLabsVoiceId, displayName, castName, nextCastColor());
}

void VoiceCasting::assignVoice(const QList<model::LineId> &lines, const ServiceVoice &voice) {
    const auto exists = [this](const model::LineId &id) { return m_document.findLine(id) != nullptr; };
    if (std::none_of(lines.begin(), lines.end(), exists))
        return;
    const Document::Change change(m_document);
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    const model::VoiceId voiceId = castInNextColor(voice.elevenLabsVoiceId, voice.name, voice.name).id;
    for (const model::LineId &id : lines)
        m_document.updateLine(
            id, [&](model::ProjectLine &line) { line.voiceId = voiceId; }, EditKey());
    m_history.registerUndo(before, QStringLiteral("Change Voice"));
}

const model::ProjectVoice *VoiceCasting::findByServiceId(const QString &elevenLabsVoiceId) const {
    const QList<model::ProjectVoice> &voices = m_document.project().voices;
    const auto found = std::find_if(voices.begin(), voices.end(), [&](const model::ProjectVoice &voice) {
        return voice.elevenLabsVoiceId == elevenLabsVoiceId;
    });
    return found == voices.end() ? nullptr : &*found;
}

} // namespace orlenta::controller
