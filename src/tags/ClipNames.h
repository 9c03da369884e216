#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/Ids.h"
#include "model/Project.h"
#include "model/ProjectLine.h"

/// Clip names for file names and DAW sessions: at most 60 user-perceived characters, none of which a file system
/// refuses. Pure functions.
namespace orlenta::tags {

/// The name of a line's clip: voice, first words, and the line's number in its tab.
[[nodiscard]] QString clipName(const model::Project &project, const model::ProjectLine &line);
/// From the parts. `number` counts from 1; an empty `castName` becomes "Voice".
[[nodiscard]] QString clipName(const QString &text, qsizetype number, const QString &castName);

/// The name of a clip that joins several lines. `scriptName` is the active tab's name, `scriptLineIds` its lines in
/// display order.
[[nodiscard]] QString continuousClipName(const QString &scriptName, const model::LineIdList &scriptLineIds,
                                         const QList<model::LineId> &clipLineIds);

/// Removes characters that file systems refuse, collapses white space, and cuts the name to 60 user-perceived
/// characters and 180 bytes of UTF-8.
[[nodiscard]] QString cleanedClipName(const QString &name);

} // namespace orlenta::tags
