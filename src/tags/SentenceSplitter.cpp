#include "tags/SentenceSplitter.h"

#include <algorithm>
#include <array>

#include <QtCore/QStringView>
#include <QtCore/QTextBoundaryFinder>

#include "tags/TagParser.h"

namespace orlenta::tags {
namespace {

bool isTerminator(QChar unit) {
    return unit == u'.' || unit == u'!' || unit == u'?';
}

char32_t codePointEndingAt(QStringView text, qsizetype end) {
    const QChar last = text.at(end - 1);
    if (last.isLowSurrogate() && end >= 2 && text.at(end - 2).isHighSurrogate())
        return QChar::surrogateToUcs4(text.at(end - 2), last);
    return last.unicode();
}

bool isCasedLetter(char32_t codePoint) {
    const QChar::Category category = QChar::category(codePoint);
    return category == QChar::Letter_Uppercase || category == QChar::Letter_Lowercase ||
           category == QChar::Letter_Titlecase;
}

bool isKnownAbbreviation(QStringView letters) {
    static constexpr std::array<QStringView, 16> words{u"mr", u"mrs", u"ms", u"dr",  u"prof", u"sr", u"jr", u"st",
                                                       u"mt", u"ft",  u"vs", u"etc", u"eg",   u"ie", u"ca", u"approx"};
    const QString lowered = letters.toString().toLower();
    return std::find(words.begin(), words.end(), QStringView(lowered)) != words.end();
}

/// Whether the full stop at `stop` ends an abbreviation: a known word, a single letter, or letters separated by full
/// stops.
bool closesAbbreviation(QStringView text, qsizetype stop) {
    int letterCount = 0;
    bool hasCase = false;
    bool hasInnerStop = false;
    qsizetype start = stop;
    while (start > 0) {
        const char32_t codePoint = codePointEndingAt(text, start);
        if (codePoint == U'.') {
            hasInnerStop = true;
        } else if (QChar::isLetter(codePoint)) {
            ++letterCount;
            hasCase = hasCase || isCasedLetter(codePoint);
        } else if (!QChar::isMark(codePoint)) {
            break;
        }
        start -= QChar::requiresSurrogates(codePoint) ? 2 : 1;
    }
    if (letterCount == 0)
        return false;
    if (hasCase && (letterCount == 1 || hasInnerStop))
        return true;
    QString letters = text.sliced(start, stop - start).toString();
    return isKnownAbbreviation(letters.remove(u'.'));
}

/// Whether the sentence continues after this full stop, exclamation or question mark: an ellipsis, an abbreviation, or
/// "?!", which stays with the answer after it.
bool continuesSentence(QStringView text, qsizetype mark) {
    const QChar unit = text.at(mark);
    const QChar before = mark > 0 ? text.at(mark - 1) : QChar();
    const QChar after = mark + 1 < text.size() ? text.at(mark + 1) : QChar();
    if (unit == u'.')
        return before == u'.' || after == u'.' || closesAbbreviation(text, mark);
    return before == (unit == u'!' ? u'?' : u'!');
}

bool endsSentence(QStringView text, qsizetype mark) {
    if (mark + 1 >= text.size() || !text.at(mark + 1).isSpace())
        return false;
    qsizetype next = mark + 1;
    while (next < text.size() && text.at(next).isSpace())
        ++next;
    return next < text.size() && !isTerminator(text.at(next)) && !continuesSentence(text, mark);
}

void appendTrimmed(QStringList &sentences, QStringView sentence) {
    if (const QStringView trimmed = sentence.trimmed(); !trimmed.isEmpty())
        sentences.append(trimmed.toString());
}

void appendByRules(QStringList &sentences, QStringView text) {
    qsizetype cut = 0;
    qsizetype bracketDepth = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        if (unit == u'[') {
            ++bracketDepth;
        } else if (unit == u']') {
            bracketDepth = std::max<qsizetype>(bracketDepth - 1, 0);
        } else if (bracketDepth == 0 && isTerminator(unit) && endsSentence(text, i)) {
            appendTrimmed(sentences, text.sliced(cut, i + 1 - cut));
            cut = i + 1;
        }
    }
    appendTrimmed(sentences, text.sliced(cut));
}

bool isClosing(QChar unit) {
    switch (unit.category()) {
    case QChar::Punctuation_Close:
    case QChar::Punctuation_FinalQuote:
    case QChar::Punctuation_InitialQuote:
        return true;
    default:
        return unit == u'"' || unit == u'\'';
    }
}

/// Where the sentence before a boundary ends: without trailing white space (`end`), and without the quotes and brackets
/// after its mark (`markEnd`).
struct SentenceEnd {
    qsizetype markEnd = 0;
    qsizetype end = 0;
};

SentenceEnd sentenceEndBefore(QStringView text, qsizetype boundary) {
    qsizetype end = boundary;
    while (end > 0 && text.at(end - 1).isSpace())
        --end;
    qsizetype markEnd = end;
    while (markEnd > 0 && isClosing(text.at(markEnd - 1)))
        --markEnd;
    return {markEnd, end};
}

/// Whether the single letter before a full stop ends a longer word, such as "tomorrow's" or "3D". The rules would take
/// it for an initial.
bool closesLongerWord(QStringView text, qsizetype stop) {
    if (stop < 2 || !text.at(stop - 1).isLetter())
        return false;
    const QChar before = text.at(stop - 2);
    const bool isApostrophe = before == u'\'' || before == u'\u2019';
    return before.isDigit() || (isApostrophe && stop >= 3 && text.at(stop - 3).isLetterOrNumber());
}

/// Unicode's sentence boundaries ignore abbreviations and ellipses and split "a!b". Our rules override them there, so
/// that the two never contradict each other.
bool acceptsBoundary(QStringView text, qsizetype boundary, SentenceEnd sentence) {
    if (sentence.markEnd == 0 || !isTerminator(text.at(sentence.markEnd - 1)))
        return true;
    if (sentence.end == boundary)
        return false;
    const qsizetype mark = sentence.markEnd - 1;
    if (text.at(mark) == u'.' && closesLongerWord(text, mark))
        return true;
    if (sentence.markEnd < sentence.end)
        return text.at(mark) != u'.' || !closesAbbreviation(text, mark);
    return !continuesSentence(text, mark);
}

void appendSentences(QStringList &sentences, const QString &paragraph) {
    const QList<ParsedTag> tags = parseTags(paragraph);
    auto tag = tags.begin();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Sentence, paragraph);
    qsizetype cut = 0;
    for (qsizetype boundary = finder.toNextBoundary(); boundary >= 0; boundary = finder.toNextBoundary()) {
        const SentenceEnd sentence = sentenceEndBefore(paragraph, boundary);
        while (tag != tags.end() && tag->fullRange.end() <= sentence.markEnd)
            ++tag;
        const bool isInsideTag = tag != tags.end() && tag->fullRange.location < sentence.markEnd;
        if (isInsideTag || !acceptsBoundary(paragraph, boundary, sentence))
            continue;
        appendByRules(sentences, QStringView(paragraph).sliced(cut, boundary - cut));
        cut = boundary;
    }
    appendByRules(sentences, QStringView(paragraph).sliced(cut));
}

} // namespace

QStringList splitSentences(const QString &text) {
    QString lines = text;
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(u'\r', u'\n');
    QStringList sentences;
    QStringList pieces;
    const auto endParagraph = [&] {
        if (!pieces.isEmpty())
            appendSentences(sentences, pieces.join(u' ').simplified());
        pieces.clear();
    };
    for (const QStringView line : QStringView(lines).split(u'\n')) {
        if (const QStringView piece = line.trimmed(); piece.isEmpty())
            endParagraph();
        else
            pieces.append(piece.toString());
    }
    endParagraph();
    return sentences;
}

} // namespace orlenta::tags
