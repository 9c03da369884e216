#pragma once

#include "model/ScriptLine.h"

namespace orlenta::model {

/// A tab of the older single-file format, which contains its lines.
struct ScriptTab {
    TabId id;
    QString name;
    QList<ScriptLine> lines;

    friend bool operator==(const ScriptTab &, const ScriptTab &) = default;
};

} // namespace orlenta::model
