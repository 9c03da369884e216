#pragma once

#include <QtCore/QString>

#include "model/Ids.h"
#include "tags/TagCategory.h"

namespace orlenta::tags {

/// A tag on a line, with the category it was shown in.
struct TagInstance {
    model::LineId lineId;
    QString tagText;
    QString normalizedKey;
    TagCategory category = TagCategory::Emotion;

    /// The line's upper-case id, a colon and the tag key.
    [[nodiscard]] QString identity() const;

    friend bool operator==(const TagInstance &, const TagInstance &) = default;
};

[[nodiscard]] size_t qHash(const TagInstance &instance, size_t seed = 0);

} // namespace orlenta::tags
