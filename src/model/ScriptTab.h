#pragma once

#include "model/ScriptLine.h"

namespace orlenta::model {

/// One tab of the older single-file format, with its lines inside it.
struct ScriptTab {
    TabId id;
    QString name;
    QList<ScriptLine> lines;

    friend bool operator==(const ScriptTab &, const ScriptTab &) = default;
};

} // namespace orlenta::model
