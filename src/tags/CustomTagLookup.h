#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/CustomTag.h"
#include "tags/TagCategory.h"

namespace orlenta::tags {

/// The category of a tag among the user's tags: that of the first enabled tag with the same key; none if its category
/// is invalid. Ignores the tag `excluding`.
[[nodiscard]] std::optional<TagCategory> customCategory(const QString &raw, const QList<model::CustomTag> &customTags,
                                                        std::optional<model::CustomTagId> excluding = std::nullopt);
/// Whether the user has a tag with the same key, enabled or not.
[[nodiscard]] bool hasCustomTag(const QString &raw, const QList<model::CustomTag> &customTags);

} // namespace orlenta::tags
