#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>

#include "base/TypedId.h"
#include "tags/TagCategory.h"

namespace orlenta::tags {

using TagItemId = base::TypedId<struct TagItemIdTag>;

/// An entry of the tag palette.
struct TagItem {
    /// The decoded vocabulary file: an object with the keys `version` and `entries`.
    struct CanonicalTagPayload {
        int version = 0;
        /// Tag key to category.
        QHash<QString, TagCategory> entries;
    };

    TagItemId id;
    /// The displayed text.
    QString label;
    /// The inserted text. Not always a tag: pauses are punctuation.
    QString insertText;
    TagCategory category = TagCategory::Emotion;

    friend bool operator==(const TagItem &, const TagItem &) = default;
};

} // namespace orlenta::tags
