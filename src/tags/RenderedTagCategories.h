#pragma once

#include <functional>
#include <optional>

#include <QtCore/QHash>
#include <QtCore/QString>

#include "tags/TagCategory.h"
#include "tags/TagInstance.h"

namespace orlenta::tags {

/// The category each tag of a document is shown in, by tag key. Kept while the document is open, not saved, so that
/// redrawing doesn't read the user's tags. Main thread.
class RenderedTagCategories final {
public:
    /// Looks up a tag, as written, among the user's tags.
    using CustomCategoryLookup = std::function<std::optional<TagCategory>(const QString &raw)>;

    explicit RenderedTagCategories(CustomCategoryLookup customCategory = {});

    /// The category to show a tag in: the remembered one, otherwise the user's, otherwise the built-in vocabulary's.
    /// None: the tag is shown as plain text until something classifies it.
    [[nodiscard]] std::optional<TagCategory> categoryForTag(const QString &raw);
    /// Remembers the category a tag was shown in.
    void recordTagInstance(const TagInstance &instance);
    /// Sets or removes the category for a key.
    void store(const QString &normalizedKey, TagCategory category);
    void remove(const QString &normalizedKey);

private:
    CustomCategoryLookup m_customCategory;
    QHash<QString, TagCategory> m_categories;
};

} // namespace orlenta::tags
