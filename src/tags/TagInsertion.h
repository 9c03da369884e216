#pragma once

#include <optional>

#include <QtCore/QString>

#include "tags/TagItem.h"
#include "tags/Utf16Range.h"

/// What the palette does to a line's text, as pure functions: the document makes it an undoable change.
namespace orlenta::tags {

/// Where a caret or selection may be known from, the freshest first.
struct SelectionSources {
    /// Of the text view that has the keyboard.
    std::optional<Utf16Range> liveSelection;
    std::optional<Utf16Range> textSelectionRange;
    std::optional<Utf16Range> lastNonEmptySelection;
};

/// The outcome of a palette item. The last non-empty selection is spent with it.
struct TagInsertion {
    /// The whole new text; equal to the old one when there was nothing to change.
    QString text;
    /// The new caret or selection.
    Utf16Range textSelectionRange;
};

/// The range whose stress is toggled: the first known source decides; an empty range reads as location 0, length 0.
[[nodiscard]] Utf16Range effectiveSelectionRange(const SelectionSources &sources);

/// Puts a palette item into a line's text at the caret, set off with blanks, or at the end when there is no caret. An
/// item of the category stress instead toggles the selected text between upper and lower case; none if the selection
/// doesn't fit the text.
[[nodiscard]] std::optional<TagInsertion> insertTag(const TagItem &item, const QString &text,
                                                    const SelectionSources &sources);

/// The item behind the stress button and its shortcut.
[[nodiscard]] TagItem stressTagItem();

} // namespace orlenta::tags
