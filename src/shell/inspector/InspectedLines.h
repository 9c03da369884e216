#pragma once

#include <functional>
#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>

#include "controller/casting/ModelCatalogue.h"
#include "model/Ids.h"
#include "model/ProjectLineSettings.h"

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

/// The lines that the inspector shows and changes: the selected lines of the active tab, with their effective settings.
/// Main thread; the controller outlives it.
class InspectedLines final : public QObject {
    Q_OBJECT
public:
    using Mutation = std::function<void(model::ProjectLineSettings &)>;

    explicit InspectedLines(controller::ProjectController &controller, QObject *parent = nullptr);

    [[nodiscard]] const QList<model::LineId> &ids() const { return m_ids; }
    [[nodiscard]] bool isEmpty() const { return m_ids.isEmpty(); }
    /// The inspected line, if there is exactly one.
    [[nodiscard]] std::optional<model::LineId> single() const;
    /// The effective settings of each line, in the order of ids().
    [[nodiscard]] const QList<model::ProjectLineSettings> &settings() const { return m_settings; }
    /// The value of a setting if all lines share it.
    template <typename T>
    [[nodiscard]] std::optional<T> shared(T model::ProjectLineSettings::*member) const;
    /// The voice if all lines share it; none if they differ or a line has none.
    [[nodiscard]] std::optional<model::VoiceId> sharedVoice() const;
    [[nodiscard]] bool hasDifferentVoices() const;
    [[nodiscard]] std::optional<model::PresetId> sharedPreset() const;

    /// Changes a setting of all inspected lines as one undo step. Their other settings stay. `stepped` is the control
    /// that changes it little by little, which may continue the step before.
    void change(const Mutation &mutation, std::optional<controller::SettingsControlKind> stepped = std::nullopt);

Q_SIGNALS:
    /// Other lines are inspected, or a voice, preset or setting of one has changed.
    void changed();

private:
    void refresh();

    controller::ProjectController &m_controller;
    QList<model::LineId> m_ids;
    QList<model::ProjectLineSettings> m_settings;
    QList<std::optional<model::VoiceId>> m_voices;
    QList<std::optional<model::PresetId>> m_presets;
};

template <typename T>
std::optional<T> InspectedLines::shared(T model::ProjectLineSettings::*member) const {
    if (m_settings.isEmpty())
        return std::nullopt;
    for (const model::ProjectLineSettings &settings : m_settings) {
        if (settings.*member != m_settings.first().*member)
            return std::nullopt;
    }
    return m_settings.first().*member;
}

} // namespace orlenta::shell
