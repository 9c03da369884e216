#pragma once

#include <QtCore/QStringView>

/// Counting in characters as a reader sees them (extended grapheme clusters, Unicode Annex 29): an emoji family or a
/// letter with its accents is one. Pure functions, safe from any thread, linear in the text's length.
namespace orlenta::tags {

/// The number of user-perceived characters.
[[nodiscard]] qsizetype characterCount(QStringView text);
/// The first `count` user-perceived characters; all of the text when it has no more. A view of `text`.
[[nodiscard]] QStringView characterPrefix(QStringView text, qsizetype count);
/// Whether a UTF-16 position, 0 through the text's length, stands between two characters or at an end.
[[nodiscard]] bool isCharacterBoundary(QStringView text, qsizetype position);

} // namespace orlenta::tags
