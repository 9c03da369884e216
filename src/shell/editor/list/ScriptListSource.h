#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QMetaObject>

#include "model/ProjectTab.h"
#include "shell/editor/row/LineRowContent.h"
#include "shell/editor/row/RowHeightEstimator.h"

namespace orlenta::shell {

/// Provides a script list with the lines in order, and with a line's content once it is visible. Main thread.
class ScriptListSource {
public:
    ScriptListSource() = default;
    virtual ~ScriptListSource() = default;
    ScriptListSource(const ScriptListSource &) = delete;
    ScriptListSource &operator=(const ScriptListSource &) = delete;

    [[nodiscard]] virtual const model::LineIdList &lineIds() const = 0;
    [[nodiscard]] virtual RowDensity density() const = 0;
    /// Must be cheap: the list calls it for every line when a tab opens.
    [[nodiscard]] virtual LineOutline outline(const model::LineId &id) const = 0;
    [[nodiscard]] virtual LineRowContent content(const model::LineId &id, qsizetype index) const = 0;
    /// Calls `changed` when a row's content is out of date, until disconnected or `row` is destroyed.
    virtual QMetaObject::Connection watch(const model::LineId &id, QObject *row,
                                          const std::function<void()> &changed) = 0;
};

} // namespace orlenta::shell
