#pragma once

#include <optional>

#include <QtCore/QString>

namespace orlenta::pronunciation {

/// A word as it stands at the start of a sentence: with its first character upper-cased and the rest unchanged. None
/// unless that character is a lower-case letter.
[[nodiscard]] std::optional<QString> capitalVariant(const QString &word);

} // namespace orlenta::pronunciation
