#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/Ids.h"
#include "model/Project.h"
#include "model/ProjectLine.h"

/// Names of clips as they appear in a DAW's session and as file names: at most 60 user-perceived characters, and none
/// that a file system refuses. Pure functions.
namespace orlenta::tags {

/// The name of one line's clip: voice, the first words, and the line's number in its tab.
[[nodiscard]] QString clipName(const model::Project &project, const model::ProjectLine &line);
/// The same from its parts. `number` counts from 1; an empty `castName` reads as "Voice".
[[nodiscard]] QString clipName(const QString &text, qsizetype number, const QString &castName);

/// The name of a joined clip of some lines of a script. `scriptName` is the selected tab's name, `scriptLineIds` that
/// tab's lines in display order.
[[nodiscard]] QString continuousClipName(const QString &scriptName, const model::LineIdList &scriptLineIds,
                                         const QList<model::LineId> &clipLineIds);

/// A name without the characters that file systems refuse, its white space collapsed, cut to 60 user-perceived
/// characters and 180 bytes of UTF-8.
[[nodiscard]] QString cleanedClipName(const QString &name);

} // namespace orlenta::tags
