#include "tags/ClipNames.h"

#include <algorithm>

#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QTextBoundaryFinder>

#include "tags/CharacterCount.h"

namespace orlenta::tags {
namespace {

constexpr qsizetype maximumNameCharacters = 60;
constexpr qsizetype maximumNameBytes = 180;
constexpr qsizetype maximumWords = 4;

bool isAlphanumeric(char32_t codePoint) {
    return QChar::isLetter(codePoint) || QChar::isMark(codePoint) || QChar::isNumber(codePoint);
}

QString firstWords(const QString &text) {
    QStringList words;
    QString word;
    for (qsizetype i = 0; i <= text.size() && words.size() < maximumWords; ++i) {
        const qsizetype start = i;
        char32_t codePoint = i < text.size() ? text.at(i).unicode() : U' ';
        if (i + 1 < text.size() && text.at(i).isHighSurrogate() && text.at(i + 1).isLowSurrogate())
            codePoint = QChar::surrogateToUcs4(text.at(start), text.at(++i));
        if (isAlphanumeric(codePoint)) {
            word += QStringView(text).sliced(start, i + 1 - start);
        } else if (!word.isEmpty()) {
            words.append(word);
            word.clear();
        }
    }
    return words.join(u' ');
}

/// The longest prefix of whole characters that fits the byte limit.
QString fittingBytes(const QString &name) {
    if (name.toUtf8().size() <= maximumNameBytes)
        return name;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, name);
    qsizetype fitting = 0;
    qsizetype bytes = 0;
    for (qsizetype end = finder.toNextBoundary(), start = 0; end >= 0; start = end, end = finder.toNextBoundary()) {
        bytes += QStringView(name).sliced(start, end - start).toUtf8().size();
        if (bytes > maximumNameBytes)
            break;
        fitting = end;
    }
    return name.first(fitting);
}

QString withSuffix(const QString &base, const QString &suffix) {
    const qsizetype room = std::max<qsizetype>(maximumNameCharacters - characterCount(suffix), 0);
    return characterPrefix(cleanedClipName(base), room).trimmed().toString() + suffix;
}

} // namespace

QString clipName(const model::Project &project, const model::ProjectLine &line) {
    qsizetype number = 1;
    for (const model::ProjectTab &tab : project.tabs) {
        if (const qsizetype index = tab.lineIds.indexOf(line.lineId); index >= 0) {
            number = index + 1;
            break;
        }
    }
    const model::ProjectVoice *voice = project.voiceOf(line);
    return clipName(line.text, number, voice != nullptr ? voice->castName : QString());
}

QString clipName(const QString &text, qsizetype number, const QString &castName) {
    const QString voice = castName.isEmpty() ? QStringLiteral("Voice") : castName;
    const QString words = firstWords(text);
    const QString base = words.isEmpty() ? voice : voice + QStringLiteral(" - ") + words;
    return withSuffix(base, QStringLiteral(".%1").arg(number, 2, 10, QLatin1Char('0')));
}

QString continuousClipName(const QString &scriptName, const model::LineIdList &scriptLineIds,
                           const QList<model::LineId> &clipLineIds) {
    const QSet<model::LineId> wanted(clipLineIds.begin(), clipLineIds.end());
    QList<qsizetype> positions;
    qsizetype position = 0;
    for (const model::LineId &id : scriptLineIds) {
        ++position;
        if (wanted.contains(id))
            positions.append(position);
    }
    const bool foundAll = !positions.isEmpty() && positions.size() == clipLineIds.size();
    const QString suffix = foundAll
                               ? QStringLiteral(" - Lines %1-%2").arg(positions.constFirst()).arg(positions.constLast())
                               : QStringLiteral(" - %1 Lines").arg(clipLineIds.size());
    return withSuffix(scriptName, suffix);
}

QString cleanedClipName(const QString &name) {
    QString cleaned = name;
    cleaned.removeIf([](QChar unit) { return QStringView(u"/\\:?\"<>|*").contains(unit); });
    cleaned = characterPrefix(cleaned.simplified(), maximumNameCharacters).toString();
    return fittingBytes(cleaned).trimmed();
}

} // namespace orlenta::tags
