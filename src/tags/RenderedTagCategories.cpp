#include "tags/RenderedTagCategories.h"

#include <utility>

#include "tags/TagParser.h"
#include "tags/TagVocabulary.h"

namespace orlenta::tags {

RenderedTagCategories::RenderedTagCategories(CustomCategoryLookup customCategory)
    : m_customCategory(std::move(customCategory)) {}

std::optional<TagCategory> RenderedTagCategories::categoryForTag(const QString &raw) {
    const QString key = normalizedTagKey(raw);
    if (key.isEmpty())
        return std::nullopt;
    if (const auto found = m_categories.constFind(key); found != m_categories.cend())
        return *found;
    std::optional<TagCategory> category = m_customCategory ? m_customCategory(raw) : std::nullopt;
    if (!category)
        category = canonicalCategory(raw);
    if (category)
        m_categories.insert(key, *category);
    return category;
}

void RenderedTagCategories::recordTagInstance(const TagInstance &instance) {
    store(instance.normalizedKey.isEmpty() ? normalizedTagKey(instance.tagText) : instance.normalizedKey,
          instance.category);
}

void RenderedTagCategories::store(const QString &normalizedKey, TagCategory category) {
    if (!normalizedKey.isEmpty())
        m_categories.insert(normalizedKey, category);
}

void RenderedTagCategories::remove(const QString &normalizedKey) {
    m_categories.remove(normalizedKey);
}

} // namespace orlenta::tags
