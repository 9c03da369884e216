#pragma once

#include "model/Project.h"

namespace orlenta::model {

/// Makes each line of the project stand in exactly one tab: a tab loses the ids that name no line or that an earlier
/// place has taken, and lines that stand nowhere go to the end of the first tab, in the order of `sequence`, which
/// names every line. Without a tab, "Script 1" is made of the whole sequence. Any thread.
void repairTabs(Project &project, const QList<LineId> &sequence);

} // namespace orlenta::model
