#include "controller/script/Selection.h"

#include <algorithm>

#include "controller/document/TypingSession.h"

namespace orlenta::controller {
namespace {

/// Up to here it is cheaper to look each selected line up in the script than to walk the script.
constexpr qsizetype smallSelection = 8;

QSet<model::LineId> visibleOnly(const QSet<model::LineId> &selected, const QList<model::LineId> &visible) {
    QSet<model::LineId> kept;
    if (selected.size() <= smallSelection) {
        for (const model::LineId &id : selected)
            if (visible.contains(id))
                kept.insert(id);
    } else {
        for (const model::LineId &id : visible)
            if (selected.contains(id))
                kept.insert(id);
    }
    return kept.size() == selected.size() ? selected : kept;
}

void clearIfHidden(std::optional<model::LineId> &id, const QList<model::LineId> &visible) {
    if (id && !visible.contains(*id))
        id.reset();
}

void putAlone(SelectionValues &values, const model::LineId &id) {
    values.selectedLineIds = {id};
    values.anchorId = id;
    values.focusId = id;
}

} // namespace

Selection::Selection(Document &document, TypingSession &typing, QObject *parent)
    : QObject(parent), m_document(document), m_typing(typing) {
    connect(&document, &Document::selectionChanged, this, &Selection::selectionChanged);
    connect(&document, &Document::editingLineIdChanged, this, &Selection::editingLineIdChanged);
}

std::optional<model::LineId> Selection::singleSelectedLineId() const {
    return m_values.selectedLineIds.size() == 1 ? std::optional(*m_values.selectedLineIds.begin()) : std::nullopt;
}

QList<model::LineId> Selection::selectedLinesInScript() const {
    if (const auto single = singleSelectedLineId())
        return m_document.scriptIndexOf(*single) >= 0 ? QList{*single} : QList<model::LineId>();
    QList<model::LineId> found;
    if (m_values.selectedLineIds.isEmpty())
        return found;
    for (const model::LineId &id : m_document.scriptLineIds())
        if (m_values.selectedLineIds.contains(id))
            found.append(id);
    return found;
}

void Selection::setSelectedLineIds(const QSet<model::LineId> &ids) {
    SelectionValues values = m_values;
    values.selectedLineIds = ids;
    set(values);
}

void Selection::setEditingLineId(const std::optional<model::LineId> &id) {
    SelectionValues values = m_values;
    values.editingLineId = id;
    set(values);
}

void Selection::setTextSelectionRange(const std::optional<TextRange> &range) {
    SelectionValues values = m_values;
    values.textSelectionRange = range;
    if (range && range->length > 0)
        values.lastNonEmptySelection = range;
    set(values);
}

void Selection::selectAlone(const model::LineId &id) {
    const Document::Change change(m_document);
    SelectionValues values = m_values;
    putAlone(values, id);
    if (values.editingLineId && values.editingLineId != id) {
        m_typing.commit();
        values.editingLineId.reset();
    }
    set(values);
    normalise(std::nullopt, AutoSelect::Off);
}

void Selection::toggle(const model::LineId &id) {
    const Document::Change change(m_document);
    SelectionValues values = m_values;
    if (!values.selectedLineIds.remove(id))
        values.selectedLineIds.insert(id);
    values.editingLineId.reset();
    set(values);
    normalise(std::nullopt, AutoSelect::Off);
}

void Selection::selectNext() {
    selectNeighbour(Direction::Down);
}

void Selection::selectPrevious() {
    selectNeighbour(Direction::Up);
}

void Selection::selectNeighbour(Direction direction) {
    const QList<model::LineId> selected = m_values.focusId ? QList{*m_values.focusId} : selectedLinesInScript();
    if (selected.isEmpty())
        return;
    const QList<model::LineId> &lines = m_document.scriptLineIds();
    const qsizetype from = lines.indexOf(direction == Direction::Down ? selected.last() : selected.first());
    const qsizetype to = direction == Direction::Down ? from + 1 : from - 1;
    if (from < 0 || to < 0 || to >= lines.size())
        return;
    const Document::Change change(m_document);
    selectAlone(lines.at(to));
    setEditingLineId(std::nullopt);
}

void Selection::extendDown() {
    extend(Direction::Down);
}

void Selection::extendUp() {
    extend(Direction::Up);
}

void Selection::extend(Direction direction) {
    qsizetype anchor = -1;
    qsizetype focus = -1;
    const QList<model::LineId> &lines = m_document.scriptLineIds();
    if (m_values.anchorId && m_values.focusId) {
        anchor = lines.indexOf(*m_values.anchorId);
        focus = lines.indexOf(*m_values.focusId);
    } else if (const QList<model::LineId> selected = selectedLinesInScript(); !selected.isEmpty()) {
        anchor = focus = lines.indexOf(selected.first());
    }
    if (anchor < 0 || focus < 0)
        return;
    const qsizetype moved = direction == Direction::Down ? focus + 1 : focus - 1;
    selectRange(anchor, moved < 0 || moved >= lines.size() ? focus : moved);
}

void Selection::extendTo(const model::LineId &id) {
    const qsizetype focus = m_document.scriptIndexOf(id);
    if (focus < 0)
        return;
    const QList<model::LineId> selected = m_values.anchorId ? QList{*m_values.anchorId} : selectedLinesInScript();
    const qsizetype anchor = selected.isEmpty() ? focus : m_document.scriptIndexOf(selected.first());
    selectRange(anchor < 0 ? focus : anchor, focus);
}

void Selection::selectAll() {
    if (const qsizetype count = m_document.scriptLineIds().size(); count > 0)
        selectRange(0, count - 1);
}

void Selection::selectRange(qsizetype anchor, qsizetype focus) {
    const QList<model::LineId> &lines = m_document.scriptLineIds();
    SelectionValues values = m_values;
    const auto [low, high] = std::minmax(anchor, focus);
    values.selectedLineIds = QSet<model::LineId>(lines.begin() + low, lines.begin() + high + 1);
    values.anchorId = lines.at(anchor);
    values.focusId = lines.at(focus);
    set(values);
}

void Selection::place(const model::LineId &id, Editing editing, EditKey) {
    SelectionValues values = m_values;
    putAlone(values, id);
    values.editingLineId = editing == Editing::Yes ? std::optional(id) : std::nullopt;
    set(values);
}

void Selection::placeRange(const QList<model::LineId> &ids, EditKey) {
    SelectionValues values = m_values;
    values.selectedLineIds = QSet<model::LineId>(ids.begin(), ids.end());
    values.anchorId = ids.first();
    values.focusId = ids.last();
    values.editingLineId.reset();
    set(values);
}

void Selection::restore(const SelectionValues &values, EditKey) {
    set(values);
}

void Selection::reconcile() {
    const QList<model::LineId> &visible = m_document.scriptLineIds();
    SelectionValues values = m_values;
    values.selectedLineIds = visibleOnly(values.selectedLineIds, visible);
    clearIfHidden(values.anchorId, visible);
    clearIfHidden(values.focusId, visible);
    set(values);
}

void Selection::normalise(const std::optional<model::LineId> &preferred, AutoSelect autoSelect) {
    const Document::Change change(m_document);
    if (m_document.activeTab() == nullptr) {
        model::Project &project = m_document.restructure(EditKey());
        project.activeTabId = project.tabs.isEmpty() ? std::nullopt : std::optional(project.tabs.first().id);
    }
    reconcile();
    const QList<model::LineId> &visible = m_document.scriptLineIds();
    SelectionValues values = m_values;
    clearIfHidden(values.editingLineId, visible);
    if (values.selectedLineIds.isEmpty() && preferred && visible.contains(*preferred))
        putAlone(values, *preferred);
    else if (values.selectedLineIds.isEmpty() && autoSelect == AutoSelect::On && !visible.isEmpty())
        putAlone(values, visible.first());
    set(values);
}

void Selection::set(const SelectionValues &values) {
    const Document::Change change(m_document);
    const bool editing = values.editingLineId != m_values.editingLineId;
    const bool selected = values.selectedLineIds != m_values.selectedLineIds;
    if (values != m_values)
        m_document.announce(Document::Fact::Selection);
    if (editing)
        m_document.announce(Document::Fact::EditingLine);
    m_values = values;
    model::SelectionState &stored = m_document.edit(EditKey()).selection;
    if (selected || stored.selectedLineIds.size() != values.selectedLineIds.size()) {
        stored.selectedLineIds = selectedLinesInScript();
        stored.activeLineId = singleSelectedLineId();
    }
}

} // namespace orlenta::controller
