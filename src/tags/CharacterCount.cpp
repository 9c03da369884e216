#include "tags/CharacterCount.h"

#include <algorithm>

#include <QtCore/QTextBoundaryFinder>

namespace orlenta::tags {
namespace {

/// Below the combining marks, each unit is one character, except that CR LF is one.
bool isOneUnitPerCharacter(QChar unit) {
    return unit.unicode() < 0x0300 && unit != u'\r';
}

bool isOneUnitPerCharacter(QStringView text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return isOneUnitPerCharacter(unit); });
}

} // namespace

qsizetype characterCount(QStringView text) {
    if (isOneUnitPerCharacter(text))
        return text.size();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

QStringView characterPrefix(QStringView text, qsizetype count) {
    if (count <= 0)
        return text.first(0);
    // No character is shorter than one unit.
    if (count >= text.size())
        return text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (qsizetype taken = 0; taken < count && end >= 0; ++taken)
        end = finder.toNextBoundary();
    return end < 0 ? text : text.first(end);
}

bool isCharacterBoundary(QStringView text, qsizetype position) {
    if (position <= 0 || position >= text.size())
        return position == 0 || position == text.size();
    if (isOneUnitPerCharacter(text.at(position - 1)) && isOneUnitPerCharacter(text.at(position)))
        return true;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    finder.setPosition(position);
    return finder.isAtBoundary();
}

} // namespace orlenta::tags
