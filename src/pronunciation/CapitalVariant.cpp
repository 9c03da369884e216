#include "pronunciation/CapitalVariant.h"

#include <QtCore/QList>

#include "tags/CharacterCount.h"

namespace orlenta::pronunciation {

std::optional<QString> capitalVariant(const QString &word) {
    const QString first = tags::characterPrefix(word, 1).toString();
    const QList<uint> codePoints = first.toUcs4();
    if (codePoints.isEmpty() || !QChar::isLower(codePoints.first()))
        return std::nullopt;
    return first.toUpper() + word.sliced(first.size());
}

} // namespace orlenta::pronunciation
