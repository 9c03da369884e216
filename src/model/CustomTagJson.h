#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "model/CustomTag.h"

namespace orlenta::model {

/// Writes the user's tags as a JSON array, in the same manner as a project file. Any thread.
[[nodiscard]] QByteArray encodeCustomTags(const QList<CustomTag> &tags);

/// Reads such an array; nothing if the bytes are none. Any thread.
[[nodiscard]] std::optional<QList<CustomTag>> decodeCustomTags(const QByteArray &bytes);

} // namespace orlenta::model
