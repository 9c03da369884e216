#pragma once

#include <QtCore/QString>

namespace orlenta::shell {

/// A text as it is stored, next to the raw text of the QTextDocument that edits it. A document knows one kind of line
/// break, so it can't give back every character it was given. This takes over what was typed, and keeps the rest of the
/// stored text as it is. Positions are UTF-16 code units.
class StoredText final {
public:
    StoredText() = default;
    explicit StoredText(const QString &text);

    [[nodiscard]] const QString &text() const { return m_text; }
    /// The document's raw text has become `raw`. `place` is where it changed, in case that is ambiguous: in "aaa", any
    /// "a" may be the new one. False if the stored text stays the same.
    bool takeOver(const QString &raw, qsizetype place);
    /// The position in the stored text for a position in the document.
    [[nodiscard]] qsizetype storedPosition(qsizetype rawPosition) const;
    /// The position in the document for a position in the stored text.
    [[nodiscard]] qsizetype rawPosition(qsizetype storedPosition) const;

private:
    QString m_text;
    QString m_raw;
    /// The text before any edit, so that undoing every edit restores it.
    QString m_originalText;
    QString m_originalRaw;
};

} // namespace orlenta::shell
