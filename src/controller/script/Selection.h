#pragma once

#include <optional>

#include <QtCore/QList>

#include "controller/script/SelectionValues.h"

namespace orlenta::controller {

class Edit;
class ProjectController;

/// Which lines of the active tab are selected, and where the caret stands. No operation here is an undo step or makes
/// the project dirty. Main thread.
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
    /// A range that isn't empty is kept as the last such one, too.
    void setTextSelectionRange(const std::optional<TextRange> &range);

    void selectAlone(const model::LineId &id);
    void toggle(const model::LineId &id);
    void selectNext();
    void selectPrevious();
    void extendDown();
    void extendUp();
    void selectAll();
    /// Drops what isn't in the active tab any more.
    void normalise();

    /// Selects this line alone, with anchor and focus on it; `editing` puts the caret into it, too.
    void place(const Edit &edit, const model::LineId &id, Editing editing);
    /// Selects these lines, with the anchor on the first and the focus on the last, and ends editing. Not empty.
    void placeRange(const Edit &edit, const QList<model::LineId> &ids);
    /// Drops what isn't in the active tab from the selected set, anchor and focus.
    void reconcile(const Edit &edit);
    /// The same for the caret, and selects `preferred`, or with auto-select the first line, when nothing is left.
    void normalise(const Edit &edit, const std::optional<model::LineId> &preferred, AutoSelect autoSelect);

private:
    enum class Direction { Up, Down };

    void selectRange(qsizetype anchor, qsizetype focus);
    void selectNeighbour(Direction direction);
    void extend(Direction direction);

    ProjectController &m_controller;
};

} // namespace orlenta::controller
