#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

namespace orlenta::tags {

/// The sentences of a text, trimmed, none of them empty; white space inside a paragraph comes out as single blanks. A
/// blank line ends a sentence as well. Neither a full stop inside a tag, nor an ellipsis, nor the stop of an
/// abbreviation does. Linear in the text's length; safe from any thread.
[[nodiscard]] QStringList splitSentences(const QString &text);

} // namespace orlenta::tags
