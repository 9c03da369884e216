#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QMetaObject>

#include "model/ProjectTab.h"
#include "shell/editor/row/LineRowContent.h"
#include "shell/editor/row/RowHeightEstimator.h"

namespace orlenta::shell {

/// What a script list shows: the lines in their order, and each one's content when it comes into view. Main thread.
class ScriptListSource {
public:
    ScriptListSource() = default;
    virtual ~ScriptListSource() = default;
    ScriptListSource(const ScriptListSource &) = delete;
    ScriptListSource &operator=(const ScriptListSource &) = delete;

    [[nodiscard]] virtual const model::LineIdList &lineIds() const = 0;
    /// Cheap: it is asked for every line when a tab opens.
    [[nodiscard]] virtual LineOutline outline(const model::LineId &id) const = 0;
    [[nodiscard]] virtual LineRowContent content(const model::LineId &id, qsizetype index) const = 0;
    /// Calls back when what a row shows of the line is out of date, until disconnected or `row` is gone.
    virtual QMetaObject::Connection watch(const model::LineId &id, QObject *row,
                                          const std::function<void()> &changed) = 0;
};

} // namespace orlenta::shell
