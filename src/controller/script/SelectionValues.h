#pragma once

#include <optional>

#include <QtCore/QSet>

#include "controller/script/TextRange.h"
#include "model/Ids.h"

namespace orlenta::controller {

/// The selection and the caret. Part of every undo snapshot.
struct SelectionValues {
    QSet<model::LineId> selectedLineIds;
    /// The fixed and the moving end of a range selection.
    std::optional<model::LineId> anchorId;
    std::optional<model::LineId> focusId;
    std::optional<model::LineId> editingLineId;
    std::optional<TextRange> textSelectionRange;
    std::optional<TextRange> lastNonEmptySelection;

    /// Whether both select the same lines. Ignores the caret.
    [[nodiscard]] bool hasSameLines(const SelectionValues &other) const {
        return selectedLineIds == other.selectedLineIds && anchorId == other.anchorId && focusId == other.focusId;
    }

    friend bool operator==(const SelectionValues &, const SelectionValues &) = default;
};

} // namespace orlenta::controller
