#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::model {

/// One script tab and its lines in display order.
struct ProjectTab {
    TabId id;
    QString name;
    QList<LineId> lineIds;

    friend bool operator==(const ProjectTab &, const ProjectTab &) = default;
};

} // namespace orlenta::model
