#include "tags/TagCategory.h"

namespace orlenta::tags {

QString rawValue(TagCategory category) {
    switch (category) {
    case TagCategory::Stress:
        return QStringLiteral("STRESS");
    case TagCategory::Emotion:
        return QStringLiteral("Emotion");
    case TagCategory::Vocal:
        return QStringLiteral("Vocal");
    case TagCategory::Pacing:
        return QStringLiteral("Pacing");
    case TagCategory::Character:
        return QStringLiteral("Character");
    }
    Q_UNREACHABLE();
}

std::optional<TagCategory> tagCategoryFromRawValue(QStringView text) {
    for (const TagCategory category :
         {TagCategory::Stress, TagCategory::Emotion, TagCategory::Vocal, TagCategory::Pacing, TagCategory::Character}) {
        if (text == rawValue(category))
            return category;
    }
    return std::nullopt;
}

} // namespace orlenta::tags
