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

    /// False for the last preset.
    [[nodiscard]] bool canDeletePreset() const;
    /// The inspector's message when a preset's voice couldn't be applied.
    [[nodiscard]] static QString presetNotice(const QString &missingName);

    void updateSettings(const model::LineId &id, const model::ProjectLineSettings &settings);
    void updateSettings(const QList<model::LineId> &lines, const model::ProjectLineSettings &settings);
    /// Sets the settings of each given line, all in one step.
    void updateSettings(const QHash<model::LineId, model::ProjectLineSettings> &settings);
    /// Applies the preset's settings and voice to the lines. `availableVoiceIds` are the account's voices; none while
    /// the service isn't connected. Returns the display name of a preset voice that the account no longer has.
    std::optional<QString> applyPreset(const model::PresetId &id, const QList<model::LineId> &lines,
                                       const std::optional<QSet<QString>> &availableVoiceIds);
    /// Saves the line's effective settings and voice to its preset.
    void savePreset(const model::LineId &id);
    /// Creates a preset from the line and assigns it to the line.
    void savePresetAs(const QString &name, const model::LineId &id);
    /// Deletes the preset. Its lines get the preset called "Default", or otherwise the first.
    void deletePreset(const model::PresetId &id);

    /// The preset called "Default", or otherwise the first.
    [[nodiscard]] const model::ProjectPreset &defaultPreset() const;

private:
    model::VoiceId castPresetVoice(const model::ProjectPresetVoice &voice);
    [[nodiscard]] std::optional<model::ProjectPresetVoice> presetVoiceOf(const model::ProjectLine &line) const;

    ProjectController &m_controller;
};

} // namespace orlenta::controller
