#include "tags/TagColors.h"

namespace orlenta::tags {
namespace {

struct CategoryPaint {
    SrgbColor pill;
    SrgbColor darkBackground;
    SrgbColor lightBackground;
    SrgbColor darkText;
    SrgbColor lightText;
};

std::optional<CategoryPaint> paintOf(TagCategory category) {
    switch (category) {
    case TagCategory::Stress:
        return std::nullopt;
    case TagCategory::Emotion:
        return CategoryPaint{
            {0.6, 0.208, 0.337}, {0.34, 0.17, 0.24}, {0.98, 0.92, 0.94}, {1.0, 0.8, 0.87}, {0.6, 0.21, 0.34}};
    case TagCategory::Vocal:
        return CategoryPaint{
            {0.58, 0.416, 0.0}, {0.28, 0.22, 0.1}, {0.96, 0.92, 0.8}, {1.0, 0.88, 0.6}, {0.58, 0.42, 0.0}};
    case TagCategory::Pacing:
        return CategoryPaint{
            {0.059, 0.431, 0.337}, {0.14, 0.3, 0.24}, {0.88, 0.96, 0.93}, {0.74, 0.95, 0.86}, {0.06, 0.43, 0.34}};
    case TagCategory::Character:
        return CategoryPaint{
            {0.094, 0.373, 0.647}, {0.14, 0.23, 0.34}, {0.9, 0.95, 0.98}, {0.76, 0.89, 1.0}, {0.09, 0.37, 0.65}};
    }
    Q_UNREACHABLE();
}

} // namespace

std::optional<SrgbColor> pillFill(TagCategory category) {
    const auto paint = paintOf(category);
    return paint ? std::optional(paint->pill) : std::nullopt;
}

std::optional<SrgbColor> chipBackground(TagCategory category, TagAppearance appearance) {
    const auto paint = paintOf(category);
    if (!paint)
        return std::nullopt;
    return appearance == TagAppearance::Dark ? paint->darkBackground : paint->lightBackground;
}

std::optional<SrgbColor> chipText(TagCategory category, TagAppearance appearance) {
    const auto paint = paintOf(category);
    if (!paint)
        return std::nullopt;
    return appearance == TagAppearance::Dark ? paint->darkText : paint->lightText;
}

} // namespace orlenta::tags
