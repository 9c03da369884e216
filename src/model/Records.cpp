#include "model/Project.h"

#include <algorithm>

namespace orlenta::model {
namespace {

template <typename List, typename Id>
auto findById(const List &list, const Id &id) -> decltype(&*list.begin()) {
    const auto found = std::find_if(list.begin(), list.end(), [&](const auto &record) { return record.id == id; });
    return found == list.end() ? nullptr : &*found;
}

} // namespace

ProjectLineSettings ProjectLineSettings::newLineDefaults() {
    ProjectLineSettings settings = fallback();
    settings.model = QStringLiteral("v3");
    return settings;
}

ProjectLineSettings ProjectLineSettings::fallback() {
    return {0.5, 0.75, 0.0, 1.0, QStringLiteral("v2"), QStringLiteral("Natural"), DirectionMode::Text};
}

QString defaultStripeColor() {
    return QStringLiteral("#7F78DE");
}

const ProjectPreset &ProjectPreset::processDefault() {
    static const ProjectPreset preset{PresetId::create(), QStringLiteral("Default"), ProjectLineSettings::fallback(),
                                      std::nullopt};
    return preset;
}

ProjectLine ProjectLine::makeNew(std::int64_t order) {
    ProjectLine line;
    line.lineId = LineId::create();
    line.order = order;
    line.settings = ProjectLineSettings::newLineDefaults();
    return line;
}

const Take *ProjectLine::activeTake() const {
    const Take *named = activeTakeId ? findById(takes, *activeTakeId) : nullptr;
    return named != nullptr || takes.isEmpty() ? named : &takes.last();
}

const SourceRecording *ProjectLine::activeRecording() const {
    const SourceRecording *named = activeSourceId ? findById(sourceRecordings, *activeSourceId) : nullptr;
    return named != nullptr || sourceRecordings.isEmpty() ? named : &sourceRecordings.last();
}

std::optional<QString> PronunciationEntry::alias() const {
    return mode == PronunciationMode::Simple && !phoneticOverride.isEmpty() ? std::optional(phoneticOverride)
                                                                            : std::nullopt;
}

std::optional<QString> PronunciationEntry::phonemes() const {
    return mode == PronunciationMode::Advanced && !phoneticOverride.isEmpty() ? std::optional(phoneticOverride)
                                                                              : std::nullopt;
}

Project Project::makeNew(const QString &name, base::Timestamp now) {
    Project project;
    project.projectId = ProjectId::create();
    project.projectName = name;
    project.createdAt = now;
    project.modifiedAt = now;
    const ProjectLine line = ProjectLine::makeNew();
    project.lines.append(line);
    project.tabs = {{TabId::create(), QStringLiteral("Script 1"), {line.lineId}}};
    project.activeTabId = project.tabs.first().id;
    return project;
}

const ProjectVoice *Project::findVoice(const VoiceId &id) const {
    return findById(voices, id);
}

const ProjectPreset *Project::findPreset(const PresetId &id) const {
    return findById(presets, id);
}

const ProjectTab *Project::findTab(const TabId &id) const {
    return findById(tabs, id);
}

const ProjectVoice *Project::voiceOf(const ProjectLine &line) const {
    return line.voiceId ? findVoice(*line.voiceId) : nullptr;
}

ProjectLineSettings Project::effectiveSettings(const ProjectLine &line) const {
    if (line.settings)
        return *line.settings;
    const ProjectPreset *preset = line.presetId ? findPreset(*line.presetId) : nullptr;
    return preset != nullptr ? preset->settings : ProjectLineSettings::fallback();
}

} // namespace orlenta::model
