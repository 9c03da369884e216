#pragma once

#include <optional>

#include "tags/TagCategory.h"

namespace orlenta::tags {

/// An opaque sRGB colour with components 0 to 1.
struct SrgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    friend bool operator==(const SrgbColor &, const SrgbColor &) = default;
};

enum class TagAppearance { Dark, Light };

/// The fill of a tag in the text. None for stress, which uses the desktop's accent colour.
[[nodiscard]] std::optional<SrgbColor> pillFill(TagCategory category);
/// The background of a palette chip. None for stress, which uses the desktop's control background.
[[nodiscard]] std::optional<SrgbColor> chipBackground(TagCategory category, TagAppearance appearance);
/// The text colour of a palette chip. None for stress, which uses the desktop's text colour.
[[nodiscard]] std::optional<SrgbColor> chipText(TagCategory category, TagAppearance appearance);

} // namespace orlenta::tags
