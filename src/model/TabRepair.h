#pragma once

#include "model/Project.h"

namespace orlenta::model {

/// Puts each line into exactly one tab. Tabs lose unknown ids and repeated ones after their first place; lines without
/// a tab go to the end of the first tab, in the order of `sequence`, which must name every line. Without any tab,
/// creates "Script 1" with the whole sequence. Any thread.
void repairTabs(Project &project, const QList<LineId> &sequence);

} // namespace orlenta::model
