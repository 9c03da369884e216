#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

namespace orlenta::localvoices {

/// The answer to GET /v1/voices. Previews are at `previewFolder`/ID.mp3.
[[nodiscard]] QJsonObject voicesJson(const QString &previewFolder);

} // namespace orlenta::localvoices
