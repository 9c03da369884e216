#pragma once

#include <functional>
#include <optional>

#include <QtCore/QHash>
#include <QtCore/QString>

#include "tags/TagCategory.h"
#include "tags/TagInstance.h"

namespace orlenta::tags {

/// What each tag of a document is shown as, by its key. Lives as long as the document is open and isn't saved: it keeps
/// the reading of the user's tags off the path of every redraw. Main thread.
class RenderedTagCategories final {
public:
    /// Asks the user's tags for the category of a tag; called with the text as written.
    using CustomCategoryLookup = std::function<std::optional<TagCategory>(const QString &raw)>;

    explicit RenderedTagCategories(CustomCategoryLookup customCategory = {});

    /// The category to show a tag in: what is remembered, else the user's own tags, else the shipped vocabulary. None
    /// leaves the tag plain text until something classifies it.
    [[nodiscard]] std::optional<TagCategory> categoryForTag(const QString &raw);
    /// Remembers what a pill was shown as.
    void recordTagInstance(const TagInstance &instance);
    /// Sets or forgets the answer for a key.
    void store(const QString &normalizedKey, TagCategory category);
    void remove(const QString &normalizedKey);

private:
    CustomCategoryLookup m_customCategory;
    QHash<QString, TagCategory> m_categories;
};

} // namespace orlenta::tags
