#pragma once

#include <optional>

#include <QtCore/QSet>

#include "controller/script/TextRange.h"
#include "model/Ids.h"

namespace orlenta::controller {

/// What is selected and where the caret stands; a part of every undo snapshot.
struct SelectionValues {
    QSet<model::LineId> selectedLineIds;
    /// The ends of a range selection: the one that stays and the one that moves.
    std::optional<model::LineId> anchorId;
    std::optional<model::LineId> focusId;
    std::optional<model::LineId> editingLineId;
    std::optional<TextRange> textSelectionRange;
    std::optional<TextRange> lastNonEmptySelection;

    /// Whether both select the same lines, whatever the caret does.
    [[nodiscard]] bool hasSameLines(const SelectionValues &other) const {
        return selectedLineIds == other.selectedLineIds && anchorId == other.anchorId && focusId == other.focusId;
    }

    friend bool operator==(const SelectionValues &, const SelectionValues &) = default;
};

} // namespace orlenta::controller
