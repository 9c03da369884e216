#include "controller/script/TagEditing.h"

#include "controller/document/Document.h"
#include "controller/document/UndoHistory.h"
#include "controller/script/Selection.h"
#include "tags/TagInsertion.h"
#include "tags/TagVocabulary.h"

namespace orlenta::controller {
namespace {

std::optional<tags::Utf16Range> tagRange(const std::optional<TextRange> &range) {
    return range ? std::optional(tags::Utf16Range{range->location, range->length}) : std::nullopt;
}

} // namespace

TagEditing::TagEditing(Document &document, UndoHistory &history, Selection &selection, QObject *parent)
    : QObject(parent), m_document(document), m_history(history), m_selection(selection) {}

QList<tags::TagItem> TagEditing::tagItems(tags::TagCategory category) const {
    return tags::tagItems(category, {});
}

void TagEditing::insertTag(const tags::TagItem &item, const std::optional<TextRange> &liveSelection) {
    const auto id = m_selection.singleSelectedLineId();
    const model::ProjectLine *line = id ? m_document.findLine(*id) : nullptr;
    if (line == nullptr)
        return;
    const Document::Change change(m_document);
    const QString text = line->text;
    const StoreUndoSnapshot before = m_history.takeSnapshot();
    const auto insertion = tags::insertTag(item, text,
                                           {tagRange(liveSelection), tagRange(m_selection.textSelectionRange()),
                                            tagRange(m_selection.lastNonEmptySelection())});
    if (!insertion)
        return;
    SelectionValues values = m_selection.values();
    values.textSelectionRange = TextRange{insertion->textSelectionRange.location, insertion->textSelectionRange.length};
    values.lastNonEmptySelection.reset();
    m_selection.restore(values, EditKey());
    if (insertion->text == text)
        return;
    m_document.updateLine(
        *id, [&](model::ProjectLine &tagged) { tagged.text = insertion->text; }, EditKey());
    m_history.registerUndo(before, QStringLiteral("Insert Tag"));
}

void TagEditing::toggleTagToolbarExpanded() {
    m_tagToolbarExpanded = !m_tagToolbarExpanded;
    Q_EMIT tagToolbarExpandedChanged();
}

} // namespace orlenta::controller
