#pragma once

#include <chrono>
#include <optional>
#include <utility>

#include <QtCore/QHash>
#include <QtCore/QSet>

#include "base/Clock.h"
#include "controller/casting/ModelCatalogue.h"
#include "model/Project.h"

namespace orlenta::controller {

class ProjectController;

/// A line's settings and the project's presets. Each operation is one undo step. Main thread.
class PresetEditing final {
public:
    PresetEditing(ProjectController &controller, base::Clock clock)
        : m_controller(controller), m_clock(std::move(clock)) {}

    /// False for the last preset.
    [[nodiscard]] bool canDeletePreset() const;
    /// The inspector's message when a preset's voice couldn't be applied.
    [[nodiscard]] static QString presetNotice(const QString &missingName);

    void updateSettings(const model::LineId &id, const model::ProjectLineSettings &settings);
    void updateSettings(const QList<model::LineId> &lines, const model::ProjectLineSettings &settings);
    /// Sets the settings of each given line, all in one step. `stepped` is the control that changes them little by
    /// little, as arrow keys do: its changes of these lines are one step if less than a second passes between them.
    void updateSettings(const QHash<model::LineId, model::ProjectLineSettings> &settings,
                        std::optional<SettingsControlKind> stepped = std::nullopt);
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
    /// A step that the next change may continue.
    struct SteppedChange {
        SettingsControlKind control;
        QSet<model::LineId> lines;
        std::chrono::system_clock::time_point time;
        std::uint64_t undoRevision = 0;
    };

    [[nodiscard]] bool continuesStep(SettingsControlKind control, const QSet<model::LineId> &lines) const;
    model::VoiceId castPresetVoice(const model::ProjectPresetVoice &voice);
    [[nodiscard]] std::optional<model::ProjectPresetVoice> presetVoiceOf(const model::ProjectLine &line) const;

    ProjectController &m_controller;
    base::Clock m_clock;
    std::optional<SteppedChange> m_stepped;
};

} // namespace orlenta::controller
