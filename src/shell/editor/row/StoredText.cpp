#include "shell/editor/row/StoredText.h"

#include <algorithm>

namespace orlenta::shell {
namespace {

bool isCrLf(QStringView text, qsizetype position) {
    return text.at(position) == u'\r' && position + 1 < text.size() && text.at(position + 1) == u'\n';
}

/// What a QTextDocument makes a new block of. The last two are the codes that it keeps for its frames.
bool isBlockEnd(QChar unit) {
    return unit == u'\n' || unit == u'\r' || unit == QChar::ParagraphSeparator || unit == QChar(0xFDD0) ||
           unit == QChar(0xFDD1);
}

QString rawForm(const QString &text) {
    QString raw;
    raw.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isCrLf(text, i))
            ++i;
        raw.append(isBlockEnd(text.at(i)) ? QChar(QChar::ParagraphSeparator) : text.at(i));
    }
    return raw;
}

QStringList lineBreaks(QStringView text) {
    QStringList breaks;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isBlockEnd(text.at(i)))
            continue;
        const qsizetype length = isCrLf(text, i) ? 2 : 1;
        breaks.append(text.sliced(i, length).toString());
        i += length - 1;
    }
    return breaks;
}

/// The document's text with these line breaks in their order, or with line feeds if there are more or fewer of them.
QString storedForm(QStringView raw, const QStringList &breaks) {
    const QList<QStringView> lines = raw.split(QChar(QChar::ParagraphSeparator));
    const bool keepsBreaks = breaks.size() == lines.size() - 1;
    QString text = lines.first().toString();
    for (qsizetype i = 1; i < lines.size(); ++i) {
        text += keepsBreaks ? breaks.at(i - 1) : QStringLiteral("\n");
        text += lines.at(i);
    }
    return text;
}

QString replaced(QString text, qsizetype from, qsizetype to, const QString &typed) {
    text.replace(from, to - from, typed);
    // A line feed that now follows a lone carriage return would make one line break of two.
    for (qsizetype i = from - 1; i >= 0 && isCrLf(text, i); --i)
        text[i] = u'\n';
    return text;
}

} // namespace

StoredText::StoredText(const QString &text)
    : m_text(text), m_raw(rawForm(text)), m_originalText(m_text), m_originalRaw(m_raw) {}

bool StoredText::takeOver(const QString &raw, qsizetype place) {
    if (raw == m_raw)
        return false;
    if (raw == m_originalRaw) {
        m_text = m_originalText;
        m_raw = m_originalRaw;
        return true;
    }
    const qsizetype shorter = std::min(raw.size(), m_raw.size());
    qsizetype before = std::mismatch(raw.begin(), raw.begin() + shorter, m_raw.cbegin()).first - raw.begin();
    qsizetype after = std::mismatch(raw.rbegin(), raw.rbegin() + shorter, m_raw.crbegin()).first - raw.rbegin();
    if (before + after > shorter) {
        before = std::clamp(place, shorter - after, before);
        after = shorter - before;
    }
    const QStringView changed = QStringView(raw).sliced(before, raw.size() - before - after);
    const qsizetype from = storedPosition(before);
    const qsizetype to = storedPosition(m_raw.size() - after);
    // Text that is dragged elsewhere changes everything between the two places, but none of its line breaks.
    const QStringList breaks = lineBreaks(QStringView(m_text).sliced(from, to - from));
    QString text = replaced(m_text, from, to, storedForm(changed, breaks));
    if (!breaks.isEmpty() && rawForm(text) != raw)
        text = replaced(m_text, from, to, storedForm(changed, {}));
    m_text = text;
    m_raw = raw;
    return true;
}

qsizetype StoredText::storedPosition(qsizetype rawPosition) const {
    if (m_text.size() == m_raw.size())
        return rawPosition;
    qsizetype position = 0;
    for (qsizetype i = 0; i < rawPosition && position < m_text.size(); ++i)
        position += isCrLf(m_text, position) ? 2 : 1;
    return position;
}

qsizetype StoredText::rawPosition(qsizetype storedPosition) const {
    if (m_text.size() == m_raw.size())
        return storedPosition;
    qsizetype raw = 0;
    for (qsizetype i = 0; i < storedPosition && i < m_text.size(); ++i, ++raw)
        if (isCrLf(m_text, i))
            ++i;
    return raw;
}

} // namespace orlenta::shell
