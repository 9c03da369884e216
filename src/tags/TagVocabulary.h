#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include "model/CustomTag.h"
#include "tags/TagCategory.h"
#include "tags/TagItem.h"

/// The built-in tags. Created once on first use; any thread.
namespace orlenta::tags {

/// The built-in palette in display order.
[[nodiscard]] const QList<TagItem> &builtInTagItems();
/// One palette row: the category's built-in items, then the user's tags in it that are enabled and have a label.
[[nodiscard]] QList<TagItem> tagItems(TagCategory category, const QList<model::CustomTag> &customTags);

/// The category of a tag in the built-in vocabulary, looked up by its key.
[[nodiscard]] std::optional<TagCategory> canonicalCategory(const QString &raw);
/// The built-in vocabulary: tag key to category.
[[nodiscard]] const QHash<QString, TagCategory> &canonicalTagEntries();
/// A small vocabulary, used if the file is unusable.
[[nodiscard]] const QHash<QString, TagCategory> &fallbackTagEntries();
/// Reads the first existing file. Returns the fallback entries if there is none, if it can't be read, if it isn't of
/// the form {"version": 1, "entries": {key: category}}, or if it names an unknown category.
[[nodiscard]] QHash<QString, TagCategory> readCanonicalTagEntries(const QStringList &candidatePaths);
/// Decodes a vocabulary file of any version; none if it is malformed.
[[nodiscard]] std::optional<TagItem::CanonicalTagPayload> decodeCanonicalTagPayload(const QByteArray &json);

} // namespace orlenta::tags
