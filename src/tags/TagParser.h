#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringView>

#include "tags/ParsedTag.h"

/// The tag language: directions in square brackets within one line of plain text. There is no escape and no nesting.
/// Pure functions, safe from any thread; each takes time in proportion to the text's length.
namespace orlenta::tags {

/// The comparison key of a tag, with or without its brackets: white space collapsed, case and diacritics folded.
/// Empty means that there is no tag.
[[nodiscard]] QString normalizedTagKey(const QString &raw);
/// The tag as shown: brackets and outer white space removed, the inner text as it was typed.
[[nodiscard]] QString displayTagText(const QString &raw);
/// The tags of a text in order of appearance. Brackets around nothing but white space are ordinary text.
[[nodiscard]] QList<ParsedTag> parseTags(QStringView text);
/// The text without its tags and with the gaps tidied; a text without tags comes back untouched.
[[nodiscard]] QString strippingTags(const QString &text);

} // namespace orlenta::tags
