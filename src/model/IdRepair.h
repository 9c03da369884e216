#pragma once

#include "model/CustomTag.h"
#include "model/Project.h"

namespace orlenta::model {

/// Gives a new id to each record whose id an earlier record of the same list has, because two records of one id can't
/// be told apart. What refers to the id means the first one. Any thread.
void repairIds(QList<CustomTag> &tags);
/// The line's takes and recordings.
void repairIds(ProjectLine &line);
/// The project's voices, presets, pronunciations and tabs.
void repairIds(Project &project);

} // namespace orlenta::model
