#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "model/CustomTag.h"

namespace orlenta::model {

/// Encodes the user's tags as a JSON array, formatted like a project file. Any thread.
[[nodiscard]] QByteArray encodeCustomTags(const QList<CustomTag> &tags);

/// Decodes such an array; none if the bytes aren't one. Any thread.
[[nodiscard]] std::optional<QList<CustomTag>> decodeCustomTags(const QByteArray &bytes);

} // namespace orlenta::model
