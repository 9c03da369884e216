#pragma once

#include <optional>

#include <QtCore/QString>

#include "tags/TagItem.h"
#include "tags/Utf16Range.h"

/// How a palette item changes a line's text. Pure functions; the document makes it undoable.
namespace orlenta::tags {

/// Known carets and selections, most recent first.
struct SelectionSources {
    /// From the focused text view.
    std::optional<Utf16Range> liveSelection;
    std::optional<Utf16Range> textSelectionRange;
    std::optional<Utf16Range> lastNonEmptySelection;
};

/// The result of applying a palette item. It uses up the last non-empty selection.
struct TagInsertion {
    /// The whole new text; unchanged if there was nothing to do.
    QString text;
    /// The new caret or selection.
    Utf16Range textSelectionRange;
};

/// The range whose stress is toggled: the first source with a value; an empty range counts as {0, 0}.
[[nodiscard]] Utf16Range effectiveSelectionRange(const SelectionSources &sources);

/// Inserts a palette item into a line's text at the caret, surrounded by spaces, or at the end if there is no caret. A
/// stress item toggles the case of the selected text instead. None if the selection doesn't fit the text.
[[nodiscard]] std::optional<TagInsertion> insertTag(const TagItem &item, const QString &text,
                                                    const SelectionSources &sources);

/// The item of the stress button and its shortcut.
[[nodiscard]] TagItem stressTagItem();

} // namespace orlenta::tags
