#include "model/Project.h"

#include <algorithm>

#include "model/RecordSearch.h"

namespace orlenta::model {

Project Project::makeNew(const QString &name, base::Timestamp now) {
    Project project;
    project.projectId = ProjectId::create();
    project.projectName = name;
    project.createdAt = now;
    project.modifiedAt = now;
    project.appendLine(ProjectLine::makeNew());
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

const ProjectTab *Project::tabOf(const LineId &id) const {
    const auto found =
        std::find_if(tabs.begin(), tabs.end(), [&](const ProjectTab &tab) { return tab.lineIds.contains(id); });
    return found == tabs.end() ? nullptr : &*found;
}

std::vector<const ProjectLine *> Project::linesInOrder() const {
    std::vector<const ProjectLine *> ordered;
    ordered.reserve(static_cast<size_t>(lines.size()));
    for (const ProjectTab &tab : tabs)
        for (const LineId &id : tab.lineIds)
            if (const ProjectLine *line = lines.find(id))
                ordered.push_back(line);
    return ordered;
}

void Project::appendLine(const ProjectLine &line) {
    if (tabs.isEmpty())
        tabs.append({TabId::create(), QStringLiteral("Script 1"), {}});
    lines.insert(line);
    tabs.last().lineIds.append(line.lineId);
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
