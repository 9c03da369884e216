#include "shell/controls/ShownText.h"

#include <algorithm>

#include <QtCore/QLocale>

#include "base/CutText.h"

namespace orlenta::shell {
namespace {

constexpr qsizetype longestShownName = 120;
constexpr qsizetype tipColumns = 80;

/// The units of the text that lie within the limits.
qsizetype unitsWithin(const QString &text, ShownLimits limits) {
    const qsizetype most = std::min(text.size(), limits.units);
    qsizetype lines = 1;
    for (qsizetype at = 0; at < most; ++at)
        if (text.at(at) == u'\n' && ++lines > limits.lines)
            return at;
    return most;
}

} // namespace

QString shownName(const QString &name) {
    QString shown = base::cutText(name, longestShownName);
    for (QChar &unit : shown)
        if (unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator)
            unit = u' ';
    return shown;
}

QString shownTip(const QString &text) {
    QString tip = shownStart(text, shownMessage);
    qsizetype lineStart = 0;
    qsizetype blank = -1;
    for (qsizetype at = 0; at < tip.size(); ++at) {
        if (tip.at(at) == u'\n') {
            lineStart = at + 1;
            blank = -1;
        } else if (tip.at(at) == u' ') {
            blank = at;
        }
        if (at - lineStart >= tipColumns && blank >= 0) {
            tip[blank] = u'\n';
            lineStart = blank + 1;
            blank = -1;
        }
    }
    return tip;
}

QString shownStart(const QString &text, ShownLimits limits) {
    return base::cutText(text, unitsWithin(text, limits));
}

QString shownPart(const QString &text, ShownLimits limits) {
    const qsizetype shown = unitsWithin(text, limits);
    if (shown == text.size())
        return {};
    const QLocale locale;
    return QStringLiteral("%1 of %2 characters shown").arg(locale.toString(shown), locale.toString(text.size()));
}

} // namespace orlenta::shell
