#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace orlenta::localvoices {

/// Maps an ISO 639-1 code to espeak-ng's name for the language; empty for anything else. espeak-ng treats the name as a
/// file name, so never pass it text from a request.
[[nodiscard]] QByteArray espeakLanguage(const QString &code);

} // namespace orlenta::localvoices
