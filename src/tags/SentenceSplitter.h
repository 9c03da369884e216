#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::tags {

/// The non-empty, trimmed sentences of a text. White space inside a paragraph becomes single spaces. A blank line also
/// ends a sentence; a full stop inside a tag, an ellipsis, and an abbreviation's full stop don't. Linear time; any
/// thread.
[[nodiscard]] QStringList splitSentences(const QString &text);

} // namespace orlenta::tags
