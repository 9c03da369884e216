#pragma once

#include <QtCore/QString>

#include "tags/Utf16Range.h"

namespace orlenta::tags {

/// A tag found in a text.
struct ParsedTag {
    /// The text between the brackets, trimmed, with its case kept.
    QString tagText;
    /// The whole tag with its brackets.
    Utf16Range fullRange;
    /// The comparison key of `tagText`.
    QString normalizedKey;

    friend bool operator==(const ParsedTag &, const ParsedTag &) = default;
};

} // namespace orlenta::tags
