#include "controller/script/TagEditing.h"

#include "controller/document/Edit.h"
#include "controller/document/TypingSession.h"
#include "controller/ProjectController.h"
#include "controller/script/Selection.h"
#include "tags/TagInsertion.h"
#include "tags/TagVocabulary.h"

namespace orlenta::controller {
namespace {

std::optional<tags::Utf16Range> tagRange(const std::optional<TextRange> &range) {
    return range ? std::optional(tags::Utf16Range{range->location, range->length}) : std::nullopt;
}

} // namespace

QList<tags::TagItem> TagEditing::tagItems(tags::TagCategory category) const {
    return tags::tagItems(category, {});
}

void TagEditing::insertTag(const tags::TagItem &item, const std::optional<TextRange> &liveSelection) {
    Selection &selection = m_controller.selection();
    const auto id = selection.singleSelectedLineId();
    const model::ProjectLine *line = id ? m_controller.state().findLine(*id) : nullptr;
    if (line == nullptr)
        return;
    // Commit typing as its own step, even if the tag can't be inserted.
    m_controller.typing().commit();
    const auto insertion = tags::insertTag(item, line->text,
                                           {tagRange(liveSelection), tagRange(selection.textSelectionRange()),
                                            tagRange(selection.lastNonEmptySelection())});
    if (!insertion)
        return;
    const auto apply = [&](const Edit &edit) {
        edit->selection.textSelectionRange =
            TextRange{insertion->textSelectionRange.location, insertion->textSelectionRange.length};
        edit->selection.lastNonEmptySelection.reset();
        edit.updateLine(*id, [&](model::ProjectLine &tagged) { tagged.text = insertion->text; });
    };
    if (insertion->text == line->text)
        apply(Edit(m_controller));
    else
        apply(Edit(m_controller, QStringLiteral("Insert Tag")));
}

void TagEditing::toggleTagToolbarExpanded() {
    m_tagToolbarExpanded = !m_tagToolbarExpanded;
    Q_EMIT tagToolbarExpandedChanged();
}

} // namespace orlenta::controller
