#pragma once

#include <QtCore/QList>
#include <QtCore/QMetaObject>

#include "model/ProjectTab.h"
#include "shell/editor/LineRowContent.h"

namespace orlenta::shell {

class LineRow;

/// What a script list shows: the lines in their order, and each one's content when it comes into view. Main thread.
class ScriptListSource {
public:
    using Outline = LineOutline;

    ScriptListSource() = default;
    virtual ~ScriptListSource() = default;
    ScriptListSource(const ScriptListSource &) = delete;
    ScriptListSource &operator=(const ScriptListSource &) = delete;

    [[nodiscard]] virtual const model::LineIdList &lineIds() const = 0;
    /// Cheap: it is asked for every line when a tab opens.
    [[nodiscard]] virtual Outline outline(const model::LineId &id) const = 0;
    [[nodiscard]] virtual LineRowContent content(const model::LineId &id, qsizetype index) const = 0;
    /// Ties a row to the changes of the line that it shows from now on.
    virtual QMetaObject::Connection watch(const model::LineId &id, LineRow *row) = 0;
};

} // namespace orlenta::shell
