#include "controller/script/Selection.h"

#include <algorithm>

#include "controller/document/Edit.h"
#include "controller/document/TypingSession.h"
#include "controller/ProjectController.h"

namespace orlenta::controller {
namespace {

/// Up to this size, looking up each selected line is cheaper than walking the script.
constexpr qsizetype smallSelection = 8;

QSet<model::LineId> visibleOnly(const QSet<model::LineId> &selected, const model::LineIdList &visible) {
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

void clearIfHidden(std::optional<model::LineId> &id, const model::LineIdList &visible) {
    if (id && !visible.contains(*id))
        id.reset();
}

void putAlone(SelectionValues &values, const model::LineId &id) {
    values.selectedLineIds = {id};
    values.anchorId = id;
    values.focusId = id;
}

} // namespace

const SelectionValues &Selection::values() const {
    return m_controller.state().selection;
}

std::optional<model::LineId> Selection::singleSelectedLineId() const {
    return m_controller.state().singleSelectedLineId();
}

QList<model::LineId> Selection::selectedLinesInScript() const {
    return m_controller.state().selectedLinesInScript();
}

void Selection::setEditingLineId(const std::optional<model::LineId> &id) {
    const Edit edit(m_controller);
    edit->selection.editingLineId = id;
}

void Selection::setTextSelectionRange(const std::optional<TextRange> &range) {
    const Edit edit(m_controller);
    edit->selection.textSelectionRange = range;
    if (range && range->length > 0)
        edit->selection.lastNonEmptySelection = range;
}

void Selection::selectAlone(const model::LineId &id) {
    const Edit edit(m_controller);
    putAlone(edit->selection, id);
    if (edit->selection.editingLineId && edit->selection.editingLineId != id) {
        m_controller.typing().commit();
        edit->selection.editingLineId.reset();
    }
    normalise(edit, std::nullopt, AutoSelect::Off);
}

void Selection::toggle(const model::LineId &id) {
    const Edit edit(m_controller);
    if (!edit->selection.selectedLineIds.remove(id))
        edit->selection.selectedLineIds.insert(id);
    edit->selection.editingLineId.reset();
    normalise(edit, std::nullopt, AutoSelect::Off);
}

void Selection::selectNext() {
    selectNeighbour(Direction::Down);
}

void Selection::selectPrevious() {
    selectNeighbour(Direction::Up);
}

void Selection::selectNeighbour(Direction direction) {
    const QList<model::LineId> selected = values().focusId ? QList{*values().focusId} : selectedLinesInScript();
    if (selected.isEmpty())
        return;
    const model::LineIdList &lines = m_controller.scriptLineIds();
    const qsizetype from = lines.indexOf(direction == Direction::Down ? selected.last() : selected.first());
    const qsizetype to = direction == Direction::Down ? from + 1 : from - 1;
    if (from < 0 || to < 0 || to >= lines.size())
        return;
    const Edit edit(m_controller);
    selectAlone(lines.at(to));
    edit->selection.editingLineId.reset();
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
    const model::LineIdList &lines = m_controller.scriptLineIds();
    if (values().anchorId && values().focusId) {
        anchor = lines.indexOf(*values().anchorId);
        focus = lines.indexOf(*values().focusId);
    } else if (const QList<model::LineId> selected = selectedLinesInScript(); !selected.isEmpty()) {
        anchor = focus = lines.indexOf(selected.first());
    }
    if (anchor < 0 || focus < 0)
        return;
    const qsizetype moved = direction == Direction::Down ? focus + 1 : focus - 1;
    selectRange(anchor, moved < 0 || moved >= lines.size() ? focus : moved);
}

void Selection::selectAll() {
    if (const qsizetype count = m_controller.scriptLineIds().size(); count > 0)
        selectRange(0, count - 1);
}

void Selection::normalise() {
    normalise(Edit(m_controller), std::nullopt, AutoSelect::Off);
}

void Selection::selectRange(qsizetype anchor, qsizetype focus) {
    const Edit edit(m_controller);
    const model::LineIdList &lines = edit->scriptLineIds();
    const auto [low, high] = std::minmax(anchor, focus);
    const QList<model::LineId> range = lines.mid(low, high - low + 1);
    edit->selection.selectedLineIds = QSet<model::LineId>(range.begin(), range.end());
    edit->selection.anchorId = lines.at(anchor);
    edit->selection.focusId = lines.at(focus);
}

void Selection::place(const Edit &edit, const model::LineId &id, Editing editing) {
    putAlone(edit->selection, id);
    edit->selection.editingLineId = editing == Editing::Yes ? std::optional(id) : std::nullopt;
}

void Selection::placeRange(const Edit &edit, const QList<model::LineId> &ids) {
    edit->selection.selectedLineIds = QSet<model::LineId>(ids.begin(), ids.end());
    edit->selection.anchorId = ids.first();
    edit->selection.focusId = ids.last();
    edit->selection.editingLineId.reset();
}

void Selection::reconcile(const Edit &edit) {
    const model::LineIdList &visible = edit->scriptLineIds();
    SelectionValues &values = edit->selection;
    values.selectedLineIds = visibleOnly(values.selectedLineIds, visible);
    clearIfHidden(values.anchorId, visible);
    clearIfHidden(values.focusId, visible);
}

void Selection::normalise(const Edit &edit, const std::optional<model::LineId> &preferred, AutoSelect autoSelect) {
    model::Project &project = edit->project;
    if (edit->activeTab() == nullptr)
        project.activeTabId = project.tabs.isEmpty() ? std::nullopt : std::optional(project.tabs.first().id);
    reconcile(edit);
    const model::LineIdList &visible = edit->scriptLineIds();
    SelectionValues &values = edit->selection;
    clearIfHidden(values.editingLineId, visible);
    if (values.selectedLineIds.isEmpty() && preferred && visible.contains(*preferred))
        putAlone(values, *preferred);
    else if (values.selectedLineIds.isEmpty() && autoSelect == AutoSelect::On && !visible.isEmpty())
        putAlone(values, visible.first());
}

} // namespace orlenta::controller
