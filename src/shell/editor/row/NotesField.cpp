#include "shell/editor/row/NotesField.h"

#include <cmath>

#include <QtCore/QMimeData>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QPainter>

#include "shell/menus/CommandActions.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

NotesField::NotesField(QWidget *parent) : QTextEdit(parent), m_cut(new CutTextMark(this)) {
    connect(m_cut, &CutTextMark::wholeTextRequested, this, &NotesField::wholeTextRequested);
    setFrameShape(QFrame::NoFrame);
    setAcceptRichText(false);
    setTabChangesFocus(true);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setPlaceholderText(QStringLiteral("Notes on this line"));
    setToolTip(tipOf(CommandId::EditNotes));
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(4);
    connect(this, &QTextEdit::textChanged, this, &NotesField::followText);
    applyColors();
}

void NotesField::setNotes(const QString &notes) {
    if (m_notes != notes)
        showText(notes);
}

void NotesField::showText(const QString &notes) {
    const QScopedValueRollback guard(m_isUpdating, true);
    setPlainText(m_cut->fit(notes));
    setViewportMargins(0, 0, 0, m_cut->takenHeight());
    setReadOnly(isCut());
    m_notes = notes;
    m_text = text();
}

void NotesField::followText() {
    // The signal also reports format changes.
    if (m_isUpdating || m_text == text())
        return;
    m_text = text();
    m_notes = m_text;
    Q_EMIT notesEdited(m_notes);
}

QString NotesField::text() const {
    // toPlainText() would replace no-break spaces with plain ones.
    QString text = document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, QChar::LineFeed).replace(QChar::LineSeparator, QChar::LineFeed);
}

int NotesField::heightForTextWidth(int width) {
    document()->setTextWidth(width);
    return static_cast<int>(std::ceil(document()->size().height())) + m_cut->takenHeight();
}

void NotesField::focusInEvent(QFocusEvent *event) {
    QTextEdit::focusInEvent(event);
    viewport()->update();
    Q_EMIT entered();
}

void NotesField::focusOutEvent(QFocusEvent *event) {
    QTextEdit::focusOutEvent(event);
    viewport()->update();
    const bool isTemporary = event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason ||
                             event->reason() == Qt::ActiveWindowFocusReason;
    if (!isTemporary)
        Q_EMIT left();
}

void NotesField::paintEvent(QPaintEvent *event) {
    QTextEdit::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(viewport());
    painting::drawFocusRing(&painter, viewport()->rect(), Theme::radius(this), palette());
}

void NotesField::wheelEvent(QWheelEvent *event) {
    event->ignore();
}

void NotesField::changeEvent(QEvent *event) {
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
}

void NotesField::insertFromMimeData(const QMimeData *source) {
    if (!source->hasText())
        return;
    const QString pasted = source->text();
    if (!CutTextMark::isTooLong(m_notes.size() + pasted.size()))
        return insertPlainText(pasted);
    const QTextCursor cursor = textCursor();
    QString notes = m_text;
    showText(notes.replace(cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart(), pasted));
    Q_EMIT notesEdited(m_notes);
    Q_EMIT wholeTextRequested();
}

void NotesField::dragEnterEvent(QDragEnterEvent *event) {
    // The row handles dropped files.
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QTextEdit::dragEnterEvent(event);
}

void NotesField::applyColors() {
    const QColor muted = ThemeColors::of(palette()).textMuted;
    if (palette().color(QPalette::Text) == muted)
        return;
    QPalette own = palette();
    own.setColor(QPalette::Text, muted);
    setPalette(own);
}

} // namespace orlenta::shell
