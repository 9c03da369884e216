#include "tags/TagParser.h"

#include "tags/CharacterCount.h"

namespace orlenta::tags {
namespace {

/// Decomposed letters from here on (Armenian and later) keep their marks: outside the Latin, Greek and Cyrillic
/// scripts, a mark distinguishes words and isn't an accent.
constexpr char32_t firstUnaccentedScript = 0x0510;

bool isAsciiText(QStringView text) {
    for (const QChar unit : text) {
        if (unit.unicode() > 0x7F)
            return false;
    }
    return true;
}

/// Full case folding of one code point. QString only folds one to one, which would keep a sharp s or a ligature
/// different from its spelled-out form.
void appendFolded(QString &folded, char32_t codePoint) {
    const QString single = QString::fromUcs4(&codePoint, 1);
    const QString upper = single.toUpper();
    folded += upper.size() > single.size() ? upper.toCaseFolded() : single.toCaseFolded();
}

QString foldedForComparison(const QString &text) {
    if (isAsciiText(text))
        return text.toLower();
    const QString decomposed = text.normalized(QString::NormalizationForm_D);
    QString folded;
    folded.reserve(decomposed.size());
    bool dropsMarks = false;
    for (qsizetype i = 0; i < decomposed.size(); ++i) {
        char32_t codePoint = decomposed.at(i).unicode();
        if (decomposed.at(i).isHighSurrogate() && i + 1 < decomposed.size() && decomposed.at(i + 1).isLowSurrogate()) {
            codePoint = QChar::surrogateToUcs4(decomposed.at(i), decomposed.at(i + 1));
            ++i;
        }
        const QChar::Category category = QChar::category(codePoint);
        if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing) {
            if (!dropsMarks)
                folded += QStringView(QChar::fromUcs4(codePoint));
            continue;
        }
        dropsMarks = codePoint < firstUnaccentedScript;
        appendFolded(folded, codePoint);
    }
    return folded.toLower().normalized(QString::NormalizationForm_C);
}

/// When a tag is removed, a space left before one of these is removed too.
bool closesUpToTheLeft(QChar unit) {
    return QStringView(u",.!?;:").contains(unit);
}

bool isBlankOrTab(QChar unit) {
    return unit == u' ' || unit == u'\t';
}

QString tidiedGaps(QStringView text) {
    QString tidied;
    tidied.reserve(text.size());
    for (qsizetype i = 0; i < text.size();) {
        if (!isBlankOrTab(text.at(i))) {
            tidied += text.at(i++);
            continue;
        }
        const qsizetype start = i;
        while (i < text.size() && isBlankOrTab(text.at(i)))
            ++i;
        const QChar gap = i - start > 1 ? QChar(u' ') : text.at(start);
        if (gap == u' ' && i < text.size() && closesUpToTheLeft(text.at(i)))
            continue;
        tidied += gap;
    }
    return tidied;
}

QString trimmedBlanksAndTabs(QStringView text) {
    while (!text.isEmpty() && isBlankOrTab(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlankOrTab(text.back()))
        text.chop(1);
    return text.toString();
}

} // namespace

QString displayTagText(const QString &raw) {
    const QString trimmed = raw.trimmed();
    const qsizetype last = trimmed.size() - 1;
    // A bracket with a combining mark is a different character.
    const bool isBracketed = trimmed.size() >= 3 && trimmed.front() == u'[' && trimmed.back() == u']' &&
                             isCharacterBoundary(trimmed, 1) && isCharacterBoundary(trimmed, last);
    return isBracketed ? trimmed.sliced(1, last - 1).trimmed() : trimmed;
}

QString normalizedTagKey(const QString &raw) {
    return foldedForComparison(displayTagText(raw).simplified());
}

QList<ParsedTag> parseTags(QStringView text) {
    QList<ParsedTag> tags;
    qsizetype open = text.indexOf(u'[');
    while (open >= 0) {
        qsizetype stop = open + 1;
        while (stop < text.size() && text.at(stop) != u']' && text.at(stop) != u'\n')
            ++stop;
        if (stop < text.size() && text.at(stop) == u']') {
            const QString tagText = text.sliced(open + 1, stop - open - 1).trimmed().toString();
            if (!tagText.isEmpty())
                tags.append({tagText, {open, stop + 1 - open}, normalizedTagKey(tagText)});
        }
        // Brackets opened in between end at the same stop, so skip them.
        open = text.indexOf(u'[', stop);
    }
    return tags;
}

QString strippingTags(const QString &text) {
    const QList<ParsedTag> tags = parseTags(text);
    if (tags.isEmpty())
        return text;
    QString remaining;
    remaining.reserve(text.size());
    qsizetype copied = 0;
    for (const ParsedTag &tag : tags) {
        remaining += QStringView(text).sliced(copied, tag.fullRange.location - copied);
        copied = tag.fullRange.end();
    }
    remaining += QStringView(text).sliced(copied);
    return trimmedBlanksAndTabs(tidiedGaps(remaining));
}

} // namespace orlenta::tags
