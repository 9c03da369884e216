#pragma once

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

#include "model/CustomTag.h"
#include "tags/TagCategory.h"

namespace orlenta::tags {

/// The category that the user's tags give a tag: the first enabled tag with the same key decides, even when its
/// category word is no valid one. `excluding` is passed over.
[[nodiscard]] std::optional<TagCategory> customCategory(const QString &raw, const QList<model::CustomTag> &customTags,
                                                        std::optional<model::CustomTagId> excluding = std::nullopt);
/// Whether the user's tags hold a tag with the same key, enabled or not.
[[nodiscard]] bool hasCustomTag(const QString &raw, const QList<model::CustomTag> &customTags);

} // namespace orlenta::tags
