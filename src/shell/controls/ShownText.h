#pragma once

#include <QtCore/QString>

/// Projects and services may hold texts of any length. These are the parts of them that are shown, small enough to lay
/// out at once.
namespace orlenta::shell {

/// Limits of a shown text: UTF-16 units, and lines as the text's own line breaks make them.
struct ShownLimits {
    qsizetype units = 0;
    qsizetype lines = 0;
};

inline constexpr ShownLimits shownNotice{300, 3};
inline constexpr ShownLimits shownMessage{800, 8};

/// The start of a text for a tool tip, in lines of a comfortable length. Qt breaks only the lines of rich text.
[[nodiscard]] QString shownTip(const QString &text);
/// A name on one line, at most 120 units long.
[[nodiscard]] QString shownName(const QString &name);
/// The start of a text; all of it if it is within the limits. Ends with an ellipsis if it was cut.
[[nodiscard]] QString shownStart(const QString &text, ShownLimits limits);
/// "300 of 40,312 characters shown", or nothing if the text is within the limits.
[[nodiscard]] QString shownPart(const QString &text, ShownLimits limits);

} // namespace orlenta::shell
