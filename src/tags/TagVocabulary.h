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

/// The tags that the program knows by itself. Everything here is built once on first use and safe from any thread.
namespace orlenta::tags {

/// The built-in palette, in the order shown.
[[nodiscard]] const QList<TagItem> &builtInTagItems();
/// One palette row: the built-in items of the category, then the enabled and labelled tags of the user's in it.
[[nodiscard]] QList<TagItem> tagItems(TagCategory category, const QList<model::CustomTag> &customTags);

/// The category of a tag in the shipped vocabulary, by its key.
[[nodiscard]] std::optional<TagCategory> canonicalCategory(const QString &raw);
/// The shipped vocabulary: normalised key to category.
[[nodiscard]] const QHash<QString, TagCategory> &canonicalTagEntries();
/// The small vocabulary that stands in for one that can't be used.
[[nodiscard]] const QHash<QString, TagCategory> &fallbackTagEntries();
/// Reads the first of these files that exists. Without one, or when it can't be read, isn't of the form
/// {"version": 1, "entries": {key: category}} or names an unknown category, the fall-back entries.
[[nodiscard]] QHash<QString, TagCategory> readCanonicalTagEntries(const QStringList &candidatePaths);
/// Decodes a vocabulary file of any version; none if it is malformed.
[[nodiscard]] std::optional<TagItem::CanonicalTagPayload> decodeCanonicalTagPayload(const QByteArray &json);

} // namespace orlenta::tags
