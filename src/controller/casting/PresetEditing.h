#pragma once

#include <optional>

#include <QtCore/QHash>
#include <QtCore/QSet>

#include "model/Project.h"

namespace orlenta::controller {

class ProjectController;

/// A line's settings and the project's presets. Each operation is one undo step. Main thread.
class PresetEditing final {
public:
    explicit PresetEditing(ProjectController &controller) : m_controller(controller) {}

    /// The project keeps at least one preset.
    [[nodiscard]] bool canDeletePreset() const;
    /// What the inspector says when a preset's voice couldn't be applied.
    [[nodiscard]] static QString presetNotice(const QString &missingName);

    void updateSettings(const model::LineId &id, const model::ProjectLineSettings &settings);
    void updateSettings(const QList<model::LineId> &lines, const model::ProjectLineSettings &settings);
    /// Each line its own settings, all in one step.
    void updateSettings(const QHash<model::LineId, model::ProjectLineSettings> &settings);
    /// Gives the lines the preset's settings and voice. `availableVoiceIds` are the account's voices, none while the
    /// service isn't connected. Gives the display name of a preset voice that the account no longer has.
    std::optional<QString> applyPreset(const model::PresetId &id, const QList<model::LineId> &lines,
                                       const std::optional<QSet<QString>> &availableVoiceIds);
    /// Writes the line's effective settings and voice into its preset.
    void savePreset(const model::LineId &id);
    /// Makes a new preset of the line and points the line to it.
    void savePresetAs(const QString &name, const model::LineId &id);
    /// Removes the preset; its lines take the one called "Default", or else the first.
    void deletePreset(const model::PresetId &id);

    /// The preset called "Default", or else the first.
    [[nodiscard]] const model::ProjectPreset &defaultPreset() const;

private:
    model::VoiceId castPresetVoice(const model::ProjectPresetVoice &voice);
    [[nodiscard]] std::optional<model::ProjectPresetVoice> presetVoiceOf(const model::ProjectLine &line) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
