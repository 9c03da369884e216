#include "base/CutText.h"

#include <QtCore/QTextBoundaryFinder>

namespace orlenta::base {

QString cutText(const QString &text, qsizetype limit) {
    if (text.size() <= limit)
        return text;
    const QString start = text.left(limit + 1);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, start);
    finder.setPosition(limit);
    const qsizetype end = finder.isAtBoundary() ? limit : finder.toPreviousBoundary();
    return start.left(end) + u'…';
}

} // namespace orlenta::base
