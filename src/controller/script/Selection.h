#pragma once

#include <optional>

#include <QtCore/QList>

#include "controller/script/SelectionValues.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// The selected lines of the active tab, and the caret. Nothing here is undoable or makes the project dirty. Main
/// thread.
class Selection final {
public:
    enum class AutoSelect { Off, On };
    enum class Editing { No, Yes };

    explicit Selection(ProjectController &controller) : m_controller(controller) {}

    [[nodiscard]] const SelectionValues &values() const;
    [[nodiscard]] const QSet<model::LineId> &selectedLineIds() const { return values().selectedLineIds; }
    [[nodiscard]] std::optional<model::LineId> selectionAnchorId() const { return values().anchorId; }
    [[nodiscard]] std::optional<model::LineId> selectionFocusId() const { return values().focusId; }
    [[nodiscard]] std::optional<model::LineId> editingLineId() const { return values().editingLineId; }
    [[nodiscard]] std::optional<TextRange> textSelectionRange() const { return values().textSelectionRange; }
    [[nodiscard]] std::optional<TextRange> lastNonEmptySelection() const { return values().lastNonEmptySelection; }
    /// The selected line, if exactly one is selected.
    [[nodiscard]] std::optional<model::LineId> singleSelectedLineId() const;
    /// The selected lines of the active tab in display order.
    [[nodiscard]] QList<model::LineId> selectedLinesInScript() const;

    void setEditingLineId(const std::optional<model::LineId> &id);
    /// A non-empty range is also remembered as the last non-empty selection.
    void setTextSelectionRange(const std::optional<TextRange> &range);

    void selectAlone(const model::LineId &id);
    void toggle(const model::LineId &id);
    void selectNext();
    void selectPrevious();
    void extendDown();
    void extendUp();
    void selectAll();
    /// Drops lines that are no longer in the active tab.
    void normalise();

    /// Selects only this line, as anchor and focus. With `editing`, also puts the caret into it.
    void place(const Edit &edit, const model::LineId &id, Editing editing);
    /// Selects these lines, anchor first and focus last, and ends text editing. `ids` must not be empty.
    void placeRange(const Edit &edit, const QList<model::LineId> &ids);
    /// Drops lines that aren't in the active tab from selection, anchor and focus.
    void reconcile(const Edit &edit);
    /// Like reconcile(), also for the caret. If nothing remains selected, selects `preferred`, or with auto-select the
    /// first line.
    void normalise(const Edit &edit, const std::optional<model::LineId> &preferred, AutoSelect autoSelect);

private:
    enum class Direction { Up, Down };

    void selectRange(qsizetype anchor, qsizetype focus);
    void selectNeighbour(Direction direction);
    void extend(Direction direction);

    ProjectController &m_controller;
};

} // namespace orlenta::controller
