#pragma once

#include <QtCore/QString>

#include "base/SharedList.h"
#include "model/Ids.h"

namespace orlenta::model {

/// Line ids in display order.
using LineIdList = base::SharedList<LineId>;

/// A script tab and its lines.
struct ProjectTab {
    TabId id;
    QString name;
    LineIdList lineIds;

    friend bool operator==(const ProjectTab &, const ProjectTab &) = default;
};

} // namespace orlenta::model
