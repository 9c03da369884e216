#include "controller/casting/PresetEditing.h"

#include <algorithm>

#include "controller/casting/VoiceCasting.h"
#include "controller/document/Edit.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/ProjectController.h"

namespace orlenta::controller {

bool PresetEditing::canDeletePreset() const {
    return m_controller.project().presets.size() >= 2;
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

void PresetEditing::updateSettings(const QHash<model::LineId, model::ProjectLineSettings> &settings,
                                   std::optional<SettingsControlKind> stepped) {
    QList<model::LineId> changing;
    for (auto wanted = settings.cbegin(); wanted != settings.cend(); ++wanted) {
        const model::ProjectLine *line = m_controller.state().findLine(wanted.key());
        if (line != nullptr && line->settings != wanted.value())
            changing.append(wanted.key());
    }
    if (changing.isEmpty())
        return;
    const auto apply = [&](const Edit &edit) {
        for (const model::LineId &id : std::as_const(changing))
            edit.updateLine(id, [&](model::ProjectLine &line) { line.settings = settings.value(id); });
    };
    // What was typed meanwhile is a step between the two.
    m_controller.typing().commit();
    const QSet<model::LineId> lines(settings.keyBegin(), settings.keyEnd());
    if (stepped && continuesStep(*stepped, lines))
        apply(Edit(m_controller));
    else
        apply(Edit(m_controller, QStringLiteral("Change Settings")));
    m_stepped.reset();
    if (stepped)
        m_stepped = {*stepped, lines, m_clock(), m_controller.undoManager().revision()};
}

bool PresetEditing::continuesStep(SettingsControlKind control, const QSet<model::LineId> &lines) const {
    return m_stepped && m_stepped->control == control && m_stepped->lines == lines &&
           m_stepped->undoRevision == m_controller.undoManager().revision() &&
           m_clock() - m_stepped->time < std::chrono::seconds(1);
}

std::optional<QString> PresetEditing::applyPreset(const model::PresetId &id, const QList<model::LineId> &lines,
                                                  const std::optional<QSet<QString>> &availableVoiceIds) {
    const model::ProjectPreset *found = m_controller.project().findPreset(id);
    const auto exists = [this](const model::LineId &line) { return m_controller.state().findLine(line) != nullptr; };
    if (found == nullptr || std::none_of(lines.begin(), lines.end(), exists))
        return std::nullopt;
    const model::ProjectPreset preset = *found;
    const Edit edit(m_controller, QStringLiteral("Change Preset"));
    const bool voiceIsThere =
        preset.voice && (!availableVoiceIds || availableVoiceIds->contains(preset.voice->elevenLabsVoiceId));
    const std::optional<model::VoiceId> voiceId =
        voiceIsThere ? std::optional(castPresetVoice(*preset.voice)) : std::nullopt;
    for (const model::LineId &line : lines) {
        edit.updateLine(line, [&](model::ProjectLine &changed) {
            if (voiceId)
                changed.voiceId = voiceId;
            changed.presetId = preset.id;
            changed.settings = preset.settings;
        });
    }
    return preset.voice && !voiceIsThere ? std::optional(preset.voice->displayName) : std::nullopt;
}

void PresetEditing::savePreset(const model::LineId &id) {
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr || !line->presetId || m_controller.project().findPreset(*line->presetId) == nullptr)
        return;
    const Edit edit(m_controller, QStringLiteral("Save Preset"));
    const model::ProjectLine saved = *edit->findLine(id);
    const model::ProjectLineSettings settings = edit->project.effectiveSettings(saved);
    for (model::ProjectPreset &preset : edit->project.presets) {
        if (preset.id != *saved.presetId)
            continue;
        preset.settings = settings;
        preset.voice = presetVoiceOf(saved);
    }
}

void PresetEditing::savePresetAs(const QString &name, const model::LineId &id) {
    if (m_controller.state().findLine(id) == nullptr)
        return;
    const Edit edit(m_controller, QStringLiteral("Save Preset"));
    const model::ProjectLine &line = *edit->findLine(id);
    const model::ProjectPreset preset{model::PresetId::create(), name, edit->project.effectiveSettings(line),
                                      presetVoiceOf(line)};
    edit->project.presets.append(preset);
    edit.updateLine(id, [&preset](model::ProjectLine &pointed) { pointed.presetId = preset.id; });
}

void PresetEditing::deletePreset(const model::PresetId &id) {
    if (!canDeletePreset() || m_controller.project().findPreset(id) == nullptr)
        return;
    const Edit edit(m_controller, QStringLiteral("Delete Preset"));
    edit->project.presets.removeIf([&id](const model::ProjectPreset &preset) { return preset.id == id; });
    const model::ProjectPreset heir = defaultPreset();
    QList<model::LineId> orphans;
    edit->project.lines.forEach([&](const model::ProjectLine &line) {
        if (line.presetId == id)
            orphans.append(line.lineId);
    });
    for (const model::LineId &line : std::as_const(orphans)) {
        edit.updateLine(line, [&heir](model::ProjectLine &changed) {
            changed.presetId = heir.id;
            changed.settings = heir.settings;
        });
    }
}

const model::ProjectPreset &PresetEditing::defaultPreset() const {
    const QList<model::ProjectPreset> &presets = m_controller.project().presets;
    const auto named = std::find_if(presets.begin(), presets.end(), [](const model::ProjectPreset &preset) {
        return preset.name == QStringLiteral("Default");
    });
    return named == presets.end() ? presets.first() : *named;
}

model::VoiceId PresetEditing::castPresetVoice(const model::ProjectPresetVoice &voice) {
    return m_controller.voices()
        .ensureProjectVoice(voice.elevenLabsVoiceId, voice.displayName, voice.castName, voice.colorStripeHex)
        .id;
}

std::optional<model::ProjectPresetVoice> PresetEditing::presetVoiceOf(const model::ProjectLine &line) const {
    const model::ProjectVoice *voice = m_controller.project().voiceOf(line);
    if (voice == nullptr || voice->elevenLabsVoiceId.isEmpty())
        return std::nullopt;
    return model::ProjectPresetVoice{voice->elevenLabsVoiceId, voice->displayName, voice->castName,
                                     voice->colorStripeHex};
}

} // namespace orlenta::controller
