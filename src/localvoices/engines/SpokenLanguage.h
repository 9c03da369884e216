#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

/// espeak-ng's name for a language by its ISO 639-1 code; empty for every other text. The library takes a name for a
/// file's, so no text from outside may become one.
[[nodiscard]] QByteArray espeakLanguage(const QString &code);

} // namespace orlenta::localvoices
