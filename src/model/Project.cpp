#include "model/Project.h"

#include "model/RecordSearch.h"

namespace orlenta::model {

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
    return findRecord(voices, id);
}

const ProjectPreset *Project::findPreset(const PresetId &id) const {
    return findRecord(presets, id);
}

const ProjectTab *Project::findTab(const TabId &id) const {
    return findRecord(tabs, id);
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
