#include "controller/document/ProjectRepair.h"

#include <algorithm>
#include <utility>

#include "model/RecordSearch.h"
#include "model/TabRepair.h"

namespace orlenta::controller {
namespace {

/// A take or recording in use is one of the line's own. One that has gone leaves the choice to the rule for lines that
/// name none.
void dropUnknownAudio(model::LineTable &lines) {
    const auto namesUnknown = [](const auto &active, const auto &records) {
        return active && model::findRecord(records, *active) == nullptr;
    };
    QList<model::LineId> broken;
    lines.forEach([&](const model::ProjectLine &line) {
        if (namesUnknown(line.activeTakeId, line.takes) || namesUnknown(line.activeSourceId, line.sourceRecordings))
            broken.append(line.lineId);
    });
    for (const model::LineId &id : std::as_const(broken))
        lines.update(id, [&](model::ProjectLine &line) {
            if (namesUnknown(line.activeTakeId, line.takes))
                line.activeTakeId.reset();
            if (namesUnknown(line.activeSourceId, line.sourceRecordings))
                line.activeSourceId.reset();
        });
}

} // namespace

model::Project repairedProject(model::Project project) {
    if (project.presets.isEmpty())
        project.presets = {model::ProjectPreset::processDefault()};
    if (project.lines.isEmpty())
        project.lines.insert(model::ProjectLine::makeNew());
    dropUnknownAudio(project.lines);
    QList<model::LineId> all;
    project.lines.forEach([&all](const model::ProjectLine &line) { all.append(line.lineId); });
    std::sort(all.begin(), all.end());
    model::repairTabs(project, all);
    if (!project.activeTabId || project.findTab(*project.activeTabId) == nullptr)
        project.activeTabId = project.tabs.first().id;
    // Lines are selected anew, and possibly none.
    project.selection = {};
    return project;
}

} // namespace orlenta::controller
