#include "controller/document/ProjectRepair.h"

#include <QtCore/QSet>

namespace orlenta::controller {
namespace {

QList<model::LineId> lineIdsInOrder(const model::LineList &lines) {
    QList<model::LineId> ids;
    ids.reserve(lines.size());
    for (qsizetype i = 0; i < lines.size(); ++i)
        ids.append(lines.at(i).lineId);
    return ids;
}

void repairTabs(model::Project &project) {
    const QList<model::LineId> ordered = lineIdsInOrder(project.lines);
    if (project.tabs.isEmpty()) {
        project.tabs = {{model::TabId::create(), QStringLiteral("Script 1"), ordered}};
    } else {
        QSet<model::LineId> homeless(ordered.begin(), ordered.end());
        for (model::ProjectTab &tab : project.tabs)
            tab.lineIds.removeIf([&](const model::LineId &id) { return !homeless.remove(id); });
        for (const model::LineId &id : ordered)
            if (homeless.contains(id))
                project.tabs.first().lineIds.append(id);
    }
    if (!project.activeTabId || project.findTab(*project.activeTabId) == nullptr)
        project.activeTabId = project.tabs.first().id;
}

} // namespace

model::Project repairedProject(model::Project project) {
    if (project.presets.isEmpty())
        project.presets = {model::ProjectPreset::processDefault()};
    if (project.lines.isEmpty())
        project.lines.append(model::ProjectLine::makeNew());
    project.lines.renumberByOrder();
    repairTabs(project);
    return project;
}

} // namespace orlenta::controller
