#include "controller/document/ProjectRepair.h"

#include <algorithm>

#include "model/TabRepair.h"

namespace orlenta::controller {

model::Project repairedProject(model::Project project) {
    if (project.presets.isEmpty())
        project.presets = {model::ProjectPreset::processDefault()};
    if (project.lines.isEmpty())
        project.lines.insert(model::ProjectLine::makeNew());
    QList<model::LineId> all;
    project.lines.forEach([&all](const model::ProjectLine &line) { all.append(line.lineId); });
    std::sort(all.begin(), all.end());
    model::repairTabs(project, all);
    if (!project.activeTabId || project.findTab(*project.activeTabId) == nullptr)
        project.activeTabId = project.tabs.first().id;
    return project;
}

} // namespace orlenta::controller
