#include "tags/CustomTagLookup.h"

#include <algorithm>

#include "tags/TagParser.h"

namespace orlenta::tags {

std::optional<TagCategory> customCategory(const QString &raw, const QList<model::CustomTag> &customTags,
                                          std::optional<model::CustomTagId> excluding) {
    const QString key = normalizedTagKey(raw);
    if (key.isEmpty())
        return std::nullopt;
    for (const model::CustomTag &tag : customTags) {
        if (tag.isEnabled && excluding != tag.id && normalizedTagKey(tag.label) == key)
            return tagCategoryFromRawValue(tag.category);
    }
    return std::nullopt;
}

bool hasCustomTag(const QString &raw, const QList<model::CustomTag> &customTags) {
    const QString key = normalizedTagKey(raw);
    return !key.isEmpty() && std::any_of(customTags.begin(), customTags.end(), [&](const model::CustomTag &tag) {
        return normalizedTagKey(tag.label) == key;
    });
}

} // namespace orlenta::tags
