#pragma once

#include <QtCore/QStringView>

/// Counts characters as a reader sees them (extended grapheme clusters, Unicode Annex 29): an emoji family, or a letter
/// with its accents, is one character. Pure functions, any thread, linear time.
namespace orlenta::tags {

/// The number of user-perceived characters.
[[nodiscard]] qsizetype characterCount(QStringView text);
/// A view of the first `count` user-perceived characters, or of the whole text if it has no more.
[[nodiscard]] QStringView characterPrefix(QStringView text, qsizetype count);
/// Whether a UTF-16 position, 0 to the text's length, is between two characters or at an end.
[[nodiscard]] bool isCharacterBoundary(QStringView text, qsizetype position);

} // namespace orlenta::tags
