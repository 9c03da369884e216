#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringView>

#include "tags/ParsedTag.h"

/// The tag language: directions in square brackets within a line of plain text, without escapes or nesting. Pure
/// functions, any thread, linear time.
namespace orlenta::tags {

/// The comparison key of a tag, with or without brackets: white space collapsed, case and diacritics folded. Empty if
/// there is no tag.
[[nodiscard]] QString normalizedTagKey(const QString &raw);
/// The tag as displayed: without brackets and outer white space, otherwise as typed.
[[nodiscard]] QString displayTagText(const QString &raw);
/// The tags of a text in order. Brackets around nothing but white space are ordinary text.
[[nodiscard]] QList<ParsedTag> parseTags(QStringView text);
/// The text without its tags, with the gaps closed. Text without tags is returned unchanged.
[[nodiscard]] QString strippingTags(const QString &text);

} // namespace orlenta::tags
