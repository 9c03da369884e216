#pragma once

#include <array>
#include <optional>

#include <QtCore/QString>
#include <QtCore/QStringView>

namespace orlenta::tags {

/// The kind of direction a tag gives. Stored as its raw value.
enum class TagCategory { Stress, Emotion, Vocal, Pacing, Character };

/// The stored text of a category, which is also its title.
[[nodiscard]] QString rawValue(TagCategory category);
/// The category with exactly this raw value, or none.
[[nodiscard]] std::optional<TagCategory> tagCategoryFromRawValue(QStringView rawValue);

/// The categories offered to the user, in order. Stress edits the text and is never a tag's category.
inline constexpr std::array<TagCategory, 4> assignableTagCategories{TagCategory::Emotion, TagCategory::Vocal,
                                                                    TagCategory::Pacing, TagCategory::Character};

} // namespace orlenta::tags
