#include "shell/inspector/InspectedLines.h"

#include <algorithm>

#include "controller/casting/PresetEditing.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"

namespace orlenta::shell {
namespace {

template <typename T>
std::optional<T> agreed(const QList<std::optional<T>> &values) {
    if (values.isEmpty() ||
        std::any_of(values.begin(), values.end(), [&](const auto &v) { return v != values.first(); }))
        return std::nullopt;
    return values.first();
}

} // namespace

InspectedLines::InspectedLines(controller::ProjectController &controller, QObject *parent)
    : QObject(parent), m_controller(controller) {
    controller::onAnyChange<controller::SelectionChanged, controller::ScriptLinesChanged, controller::PresetsChanged>(
        controller, this, [this] { refresh(); });
    controller::onChange<controller::LinesChanged>(controller, this, [this](const auto &change) {
        using controller::LineField;
        if (change.fields() & (LineField::Voice | LineField::Settings))
            refresh();
    });
    refresh();
}

std::optional<model::LineId> InspectedLines::single() const {
    return m_ids.size() == 1 ? std::optional(m_ids.first()) : std::nullopt;
}

std::optional<model::VoiceId> InspectedLines::sharedVoice() const {
    return agreed(m_voices);
}

bool InspectedLines::hasDifferentVoices() const {
    return std::any_of(m_voices.begin(), m_voices.end(),
                       [this](const auto &voice) { return voice != m_voices.first(); });
}

std::optional<model::PresetId> InspectedLines::sharedPreset() const {
    return agreed(m_presets);
}

void InspectedLines::change(const Mutation &mutation, std::optional<controller::SettingsControlKind> stepped) {
    const QList<model::LineId> ids = m_ids;
    QList<model::ProjectLineSettings> wanted = m_settings;
    for (model::ProjectLineSettings &settings : wanted)
        mutation(settings);
    if (ids.isEmpty() || wanted == m_settings)
        return;
    // Each line gets its own settings, because their other settings may differ.
    QHash<model::LineId, model::ProjectLineSettings> each;
    for (qsizetype i = 0; i < ids.size(); ++i)
        each.insert(ids.at(i), wanted.at(i));
    m_controller.presets().updateSettings(each, stepped);
}

void InspectedLines::refresh() {
    const QList<model::LineId> ids = m_controller.selection().selectedLinesInScript();
    QList<model::ProjectLineSettings> settings;
    QList<std::optional<model::VoiceId>> voices;
    QList<std::optional<model::PresetId>> presets;
    const model::Project &project = m_controller.project();
    for (const model::LineId &id : ids) {
        const model::ProjectLine *line = project.lines.find(id);
        if (line == nullptr)
            continue;
        settings.append(project.effectiveSettings(*line));
        voices.append(line->voiceId);
        presets.append(line->presetId);
    }
    if (ids == m_ids && settings == m_settings && voices == m_voices && presets == m_presets)
        return;
    m_ids = ids;
    m_settings = settings;
    m_voices = voices;
    m_presets = presets;
    Q_EMIT changed();
}

} // namespace orlenta::shell
