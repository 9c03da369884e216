#pragma once

#include <optional>

#include <QtCore/QString>

namespace orlenta::pronunciation {

/// The word with its first character in upper case, as at the start of a sentence. None unless that character is a
/// lower-case letter.
[[nodiscard]] std::optional<QString> capitalVariant(const QString &word);

} // namespace orlenta::pronunciation
