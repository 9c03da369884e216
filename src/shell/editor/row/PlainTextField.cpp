#include "shell/editor/row/PlainTextField.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QtCore/QMimeData>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QKeyEvent>

namespace orlenta::shell {
namespace {

constexpr int textMargin = 4;
constexpr int shortestText = 18;

} // namespace

PlainTextField::PlainTextField(QWidget *parent) : QTextEdit(parent), m_cut(new CutTextMark(this)) {
    connect(m_cut, &CutTextMark::wholeTextRequested, this, &PlainTextField::wholeTextRequested);
    setFrameShape(QFrame::NoFrame);
    setAcceptRichText(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(textMargin);
    // It comes before the signals of the caret, whose positions need the new text, but while the layout is still old.
    connect(document(), &QTextDocument::contentsChange, this, &PlainTextField::takeOverEdit);
    connect(this, &QTextEdit::textChanged, this, [this] {
        if (std::exchange(m_isEdited, false))
            Q_EMIT textEdited();
    });
}

void PlainTextField::showText(const QString &text) {
    const QScopedValueRollback guard(m_isShowing, true);
    m_text = StoredText(text);
    setPlainText(m_cut->fit(text));
    setViewportMargins(0, 0, 0, m_cut->takenHeight());
}

void PlainTextField::takeOverEdit(int place) {
    // The signal also reports format changes. Of a text that is cut, the document has only the start.
    if (!m_isShowing && !isCut() && m_text.takeOver(document()->toRawText(), place))
        m_isEdited = true;
}

int PlainTextField::heightForTextWidth(int width) {
    document()->setTextWidth(width);
    return std::max(shortestText, static_cast<int>(std::ceil(document()->size().height()))) + m_cut->takenHeight();
}

bool PlainTextField::isTemporary(Qt::FocusReason reason) {
    return reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason || reason == Qt::ActiveWindowFocusReason;
}

void PlainTextField::keyPressEvent(QKeyEvent *event) {
    // Otherwise a typed line break couldn't be told from a line separator that the text already has.
    if (event->matches(QKeySequence::InsertLineSeparator) && !isReadOnly())
        insertPlainText(QStringLiteral("\n"));
    else
        QTextEdit::keyPressEvent(event);
}

void PlainTextField::wheelEvent(QWheelEvent *event) {
    event->ignore();
}

void PlainTextField::dragEnterEvent(QDragEnterEvent *event) {
    // The row handles dropped files.
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QTextEdit::dragEnterEvent(event);
}

QMimeData *PlainTextField::createMimeDataFromSelection() const {
    const QTextCursor cursor = textCursor();
    const qsizetype from = m_text.storedPosition(cursor.selectionStart());
    auto *selection = new QMimeData;
    selection->setText(text().sliced(from, m_text.storedPosition(cursor.selectionEnd()) - from));
    return selection;
}

void PlainTextField::insertFromMimeData(const QMimeData *source) {
    if (!source->hasText())
        return;
    const QString pasted = source->text();
    if (!CutTextMark::isTooLong(text().size() + pasted.size()))
        return insertPlainText(pasted);
    const QTextCursor cursor = textCursor();
    const qsizetype from = m_text.storedPosition(cursor.selectionStart());
    QString whole = text();
    showText(whole.replace(from, m_text.storedPosition(cursor.selectionEnd()) - from, pasted));
    Q_EMIT textEdited();
    Q_EMIT wholeTextRequested();
}

} // namespace orlenta::shell
