#include "controller/casting/PresetEditing.h"

#include <algorithm>

#include "controller/casting/VoiceCasting.h"
#include "controller/document/UndoHistory.h"

namespace orlenta::controller {

PresetEditing::PresetEditing(Document &document, UndoHistory &history, VoiceCasting &voices)
    : m_document(document), m_history(history), m_voices(voices) {}

bool PresetEditing::canDeletePreset() const {
    return m_document.project().presets.size() >= 2;
}

QString PresetEditing::presetNotice(const QString &missingName) {
    const qsizetype separator = missingName.indexOf(QStringLiteral(" - "));
    const QString name = separator < 0 ? missingName : missingName.left(separator);
    return QStringLiteral(
               "Settings applied. This preset's voice, %1, is no longer in your ElevenLabs voice library, so "
               "the line kept its current voice.")
        .arg(name);
}

void PresetEditing::updateSettings(const model::LineId &id, const model::ProjectLineSettings &settings) {
    updateSettings(QList{id}, settings);
}

void PresetEditing::updateSettings(const QList<model::LineId> &lines, const model::ProjectLineSettings &settings) {
    QHash<model::LineId, model::ProjectLineSettings> each;
    for (const model::LineId &id : lines)
        each.insert(id, settings);
    updateSettings(each);
}

void PresetEditing::updateSettings(const QHash<model::LineId, model::ProjectLineSettings> &settings) {
    QList<model::LineId> changing;
    for (auto wanted = settings.cbegin(); wanted != settings.cend(); ++wanted) {
        const model::ProjectLine *line = m_document.findLine(wanted.key());
        if (line != nullptr && line->settings != wanted.value())
            changing.append(wanted.key());
    }
    if (changing.isEmpty())
        return;
    const Document::Change change(m_document);
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    for (const model::LineId &id : changing)
        m_document.updateLine(
            id, [&](model::ProjectLine &line) { line.settings = settings.value(id); }, EditKey());
    m_history.registerUndo(before, QStringLiteral("Change Settings"));
}

std::optional<QString> PresetEditing::applyPreset(const model::PresetId &id, const QList<model::LineId> &lines,
                                                  const std::optional<QSet<QString>> &availableVoiceIds) {
    const model::ProjectPreset *found = m_document.project().findPreset(id);
    const auto exists = [this](const model::LineId &line) { return m_document.findLine(line) != nullptr; };
    if (found == nullptr || std::none_of(lines.begin(), lines.end(), exists))
        return std::nullopt;
    const Document::Change change(m_document);
    const model::ProjectPreset preset = *found;
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    const bool voiceIsThere =
        preset.voice && (!availableVoiceIds || availableVoiceIds->contains(preset.voice->elevenLabsVoiceId));
    const std::optional<model::VoiceId> voiceId =
        voiceIsThere ? std::optional(castPresetVoice(*preset.voice)) : std::nullopt;
    for (const model::LineId &line : lines) {
        m_document.updateLine(
            line,
            [&](model::ProjectLine &changed) {
                if (voiceId)
                    changed.voiceId = voiceId;
                changed.presetId = preset.id;
                changed.settings = preset.settings;
            },
            EditKey());
    }
    m_history.registerUndo(before, QStringLiteral("Change Preset"));
    return preset.voice && !voiceIsThere ? std::optional(preset.voice->displayName) : std::nullopt;
}

void PresetEditing::savePreset(const model::LineId &id) {
    const model::ProjectLine *line = m_document.findLine(id);
    if (line == nullptr || !line->presetId || m_document.project().findPreset(*line->presetId) == nullptr)
        return;
    const Document::Change change(m_document);
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    const model::ProjectLine saved = *m_document.findLine(id);
    const model::ProjectLineSettings settings = m_document.project().effectiveSettings(saved);
    const std::optional<model::ProjectPresetVoice> voice = presetVoiceOf(saved);
    for (model::ProjectPreset &preset : m_document.edit(EditKey()).presets) {
        if (preset.id != *saved.presetId)
            continue;
        preset.settings = settings;
        preset.voice = voice;
    }
    m_document.commitChange(EditKey());
    m_history.registerUndo(before, QStringLiteral("Save Preset"));
}

void PresetEditing::savePresetAs(const QString &name, const model::LineId &id) {
    if (m_document.findLine(id) == nullptr)
        return;
    const Document::Change change(m_document);
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    const model::ProjectLine &line = *m_document.findLine(id);
    const model::ProjectPreset preset{model::PresetId::create(), name, m_document.project().effectiveSettings(line),
                                      presetVoiceOf(line)};
    m_document.edit(EditKey()).presets.append(preset);
    m_document.updateLine(
        id, [&](model::ProjectLine &pointed) { pointed.presetId = preset.id; }, EditKey());
    m_history.registerUndo(before, QStringLiteral("Save Preset"));
}

void PresetEditing::deletePreset(const model::PresetId &id) {
    if (!canDeletePreset() || m_document.project().findPreset(id) == nullptr)
        return;
    const Document::Change change(m_document);
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    QList<model::ProjectPreset> &presets = m_document.edit(EditKey()).presets;
    presets.removeIf([&](const model::ProjectPreset &preset) { return preset.id == id; });
    const model::ProjectPreset heir = defaultPreset();
    QList<model::LineId> orphans;
    const model::LineList &lines = m_document.project().lines;
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (lines.at(i).presetId == id)
            orphans.append(lines.at(i).lineId);
    for (const model::LineId &line : orphans) {
        m_document.updateLine(
            line,
            [&](model::ProjectLine &changed) {
                changed.presetId = heir.id;
                changed.settings = heir.settings;
            },
            EditKey());
    }
    m_document.commitChange(EditKey());
    m_history.registerUndo(before, QStringLiteral("Delete Preset"));
}

const model::ProjectPreset &PresetEditing::defaultPreset() const {
    const QList<model::ProjectPreset> &presets = m_document.project().presets;
    const auto named = std::find_if(presets.begin(), presets.end(), [](const model::ProjectPreset &preset) {
        return preset.name == QStringLiteral("Default");
    });
    return named == presets.end() ? presets.first() : *named;
}

model::VoiceId PresetEditing::castPresetVoice(const model::ProjectPresetVoice &voice) {
    if (voice.colorStripeHex.isEmpty())
        return m_voices.castInNextColor(voice.elevenLabsVoiceId, voice.displayName, voice.castName).id;
    return m_voices.ensureProjectVoice(voice.elevenLabsVoiceId, voice.displayName, voice.castName, voice.colorStripeHex)
        .id;
}

std::optional<model::ProjectPresetVoice> PresetEditing::presetVoiceOf(const model::ProjectLine &line) const {
    const model::ProjectVoice *voice = m_document.project().voiceOf(line);
    if (voice == nullptr || voice->elevenLabsVoiceId.isEmpty())
        return std::nullopt;
    return model::ProjectPresetVoice{voice->elevenLabsVoiceId, voice->displayName, voice->castName,
                                     voice->colorStripeHex};
}

} // namespace orlenta::controller
