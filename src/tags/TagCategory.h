#pragma once

#include <array>
#include <optional>

#include <QtCore/QString>
#include <QtCore/QStringView>

namespace orlenta::tags {

/// What kind of direction a tag gives. Stored and exchanged as its raw value.
enum class TagCategory { Stress, Emotion, Vocal, Pacing, Character };

/// The stored text of a category, which is also the title shown.
[[nodiscard]] QString rawValue(TagCategory category);
/// The category of a stored text; none for any text that isn't exactly a raw value.
[[nodiscard]] std::optional<TagCategory> tagCategoryFromRawValue(QStringView rawValue);

/// The categories offered to the user, in order. Stress is an edit of the text and never a tag's category.
inline constexpr std::array<TagCategory, 4> assignableTagCategories{TagCategory::Emotion, TagCategory::Vocal,
                                                                    TagCategory::Pacing, TagCategory::Character};

} // namespace orlenta::tags
