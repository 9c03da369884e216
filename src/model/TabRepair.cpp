#include "model/TabRepair.h"

#include <QtCore/QSet>

namespace orlenta::model {

void repairTabs(Project &project, const QList<LineId> &sequence) {
    if (project.tabs.isEmpty()) {
        project.tabs = {{TabId::create(), QStringLiteral("Script 1"), sequence}};
        return;
    }
    QSet<LineId> homeless(sequence.begin(), sequence.end());
    for (ProjectTab &tab : project.tabs)
        tab.lineIds.removeIf([&homeless](const LineId &id) { return !homeless.remove(id); });
    if (homeless.isEmpty())
        return;
    for (const LineId &id : sequence)
        if (homeless.contains(id))
            project.tabs.first().lineIds.append(id);
}

} // namespace orlenta::model
