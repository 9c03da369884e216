#pragma once

#include <QtCore/QObject>

#include "controller/document/Document.h"
#include "controller/script/SelectionValues.h"

namespace orlenta::controller {

class TypingSession;

/// Which lines of the active tab are selected, and where the caret stands. No operation here is an undo step or makes
/// the project dirty; each ends with the selection copied into the document. Main thread.
class Selection final : public QObject {
    Q_OBJECT
public:
    enum class AutoSelect { Off, On };

    Selection(Document &document, TypingSession &typing, QObject *parent = nullptr);

    [[nodiscard]] const QSet<model::LineId> &selectedLineIds() const { return m_values.selectedLineIds; }
    [[nodiscard]] std::optional<model::LineId> selectionAnchorId() const { return m_values.anchorId; }
    [[nodiscard]] std::optional<model::LineId> selectionFocusId() const { return m_values.focusId; }
    [[nodiscard]] std::optional<model::LineId> editingLineId() const { return m_values.editingLineId; }
    [[nodiscard]] std::optional<TextRange> textSelectionRange() const { return m_values.textSelectionRange; }
    [[nodiscard]] std::optional<TextRange> lastNonEmptySelection() const { return m_values.lastNonEmptySelection; }
    [[nodiscard]] const SelectionValues &values() const { return m_values; }
    /// The selected line, if exactly one is selected.
    [[nodiscard]] std::optional<model::LineId> singleSelectedLineId() const;
    /// The selected lines of the active tab in display order.
    [[nodiscard]] QList<model::LineId> selectedLinesInScript() const;

    void setSelectedLineIds(const QSet<model::LineId> &ids);
    void setEditingLineId(const std::optional<model::LineId> &id);
    /// A range that isn't empty is kept as the last such one, too.
    void setTextSelectionRange(const std::optional<TextRange> &range);

    void selectAlone(const model::LineId &id);
    void toggle(const model::LineId &id);
    void selectNext();
    void selectPrevious();
    void extendDown();
    void extendUp();
    /// Every line between the anchor and `id`; the anchor stays.
    void extendTo(const model::LineId &id);
    void selectAll();

    /// Sets the selected set to this line, with anchor and focus on it; `editing` puts the caret into it, too.
    enum class Editing { No, Yes };
    void place(const model::LineId &id, Editing editing, EditKey);
    /// Selects these lines, with the anchor on the first and the focus on the last, and ends editing. Not empty.
    void placeRange(const QList<model::LineId> &ids, EditKey);
    /// Takes over a stored selection as it stands.
    void restore(const SelectionValues &values, EditKey);
    /// Drops what isn't visible from the selected set, anchor and focus.
    void reconcile();
    /// Drops what isn't visible, and selects `preferred`, or with auto-select the first line, when nothing is left.
    void normalise(const std::optional<model::LineId> &preferred, AutoSelect autoSelect);

Q_SIGNALS:
    void selectionChanged();
    void editingLineIdChanged();

private:
    enum class Direction { Up, Down };

    void set(const SelectionValues &values);
    void selectRange(qsizetype anchor, qsizetype focus);
    void selectNeighbour(Direction direction);
    void extend(Direction direction);

    Document &m_document;
    TypingSession &m_typing;
    SelectionValues m_values;
};

} // namespace orlenta::controller
