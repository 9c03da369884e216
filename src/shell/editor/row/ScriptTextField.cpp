#include "shell/editor/row/ScriptTextField.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QtCore/QMimeData>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QScrollBar>

#include "shell/menus/CommandActions.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

constexpr int textMargin = 4;
constexpr int shortestText = 18;

} // namespace

ScriptTextField::ScriptTextField(QWidget *parent) : QTextEdit(parent), m_cut(new CutTextMark(this)) {
    connect(m_cut, &CutTextMark::wholeTextRequested, this, &ScriptTextField::wholeTextRequested);
    setFrameShape(QFrame::NoFrame);
    setAcceptRichText(false);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTabChangesFocus(false);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    viewport()->setCursor(Qt::ArrowCursor);
    document()->setDocumentMargin(textMargin);
    setPlaceholderText(QStringLiteral("Write or paste what this line says"));
    setAccessibleName(QStringLiteral("Line text"));
    connect(this, &QTextEdit::textChanged, this, [this] {
        if (!m_isUpdatingFromModel)
            Q_EMIT textEdited();
    });
    const auto selectionMoved = [this] {
        if (!m_isUpdatingFromModel && hasFocus())
            Q_EMIT sourceSelectionChanged();
    };
    connect(this, &QTextEdit::cursorPositionChanged, this, selectionMoved);
    connect(this, &QTextEdit::selectionChanged, this, selectionMoved);
    applyScriptFont();
}

QString ScriptTextField::sourceText() const {
    return isCut() ? m_cut->wholeText() : toPlainText();
}

void ScriptTextField::setSourceText(const QString &text) {
    m_isUpdatingFromModel = true;
    setPlainText(m_cut->fit(text));
    setViewportMargins(0, 0, 0, m_cut->takenHeight());
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    QTextBlockFormat format;
    format.setLineHeight(120, QTextBlockFormat::ProportionalHeight);
    cursor.mergeBlockFormat(format);
    m_isUpdatingFromModel = false;
    clearTypingUndo();
}

controller::TextRange ScriptTextField::sourceSelection() const {
    const QTextCursor cursor = textCursor();
    return {cursor.selectionStart(), cursor.selectionEnd() - cursor.selectionStart()};
}

void ScriptTextField::setSourceSelection(const controller::TextRange &range) {
    const qsizetype last = document()->characterCount() - 1;
    QTextCursor cursor = textCursor();
    cursor.setPosition(static_cast<int>(std::clamp<qsizetype>(range.location, 0, last)));
    cursor.setPosition(static_cast<int>(std::clamp<qsizetype>(range.location + range.length, 0, last)),
                       QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void ScriptTextField::forgetText() {
    setAllowsEditing(false);
    m_content.reset();
}

void ScriptTextField::setContent(const LineTextContent &content) {
    const std::optional<LineTextContent> before = std::exchange(m_content, content);
    const bool wasFlushed = before && before->typingFlushVersion != content.typingFlushVersion;
    // While a key is handled, the field is newer than the line. Replace its text only if the line's has changed.
    const bool hasNewText = before && (before->text != content.text || wasFlushed);
    if (!before || (hasNewText && sourceText() != content.text)) {
        const controller::TextRange selection = sourceSelection();
        setSourceText(content.text);
        if (content.isEditing)
            setSourceSelection(content.selection.value_or(selection));
    } else if (wasFlushed) {
        clearTypingUndo();
    }
    setAllowsEditing(content.isEditing && !isCut());
}

void ScriptTextField::setAllowsEditing(bool allowsEditing) {
    if (m_allowsEditing == allowsEditing)
        return;
    m_allowsEditing = allowsEditing;
    setTextInteractionFlags(allowsEditing ? Qt::TextEditorInteraction : Qt::NoTextInteraction);
    setFocusPolicy(allowsEditing ? Qt::StrongFocus : Qt::NoFocus);
    viewport()->setCursor(allowsEditing ? Qt::IBeamCursor : Qt::ArrowCursor);
    setUndoRedoEnabled(allowsEditing);
    if (!allowsEditing) {
        QTextCursor cursor = textCursor();
        cursor.clearSelection();
        setTextCursor(cursor);
    }
}

void ScriptTextField::clearTypingUndo() {
    document()->clearUndoRedoStacks();
}

void ScriptTextField::placeCaretAt(const QPoint &point) {
    setTextCursor(cursorForPosition(point));
}

int ScriptTextField::heightForTextWidth(int width) {
    document()->setTextWidth(width);
    return std::max(shortestText, static_cast<int>(std::ceil(document()->size().height()))) + m_cut->takenHeight();
}

bool ScriptTextField::event(QEvent *event) {
    // Accept these keys so that the window's menu doesn't handle them first.
    if (event->type() == QEvent::ShortcutOverride && m_allowsEditing) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo) ||
            isKeyOf(*key, CommandId::LeaveText) || isKeyOf(*key, CommandId::Stress)) {
            event->accept();
            return true;
        }
    }
    return QTextEdit::event(event);
}

void ScriptTextField::keyPressEvent(QKeyEvent *event) {
    if (isKeyOf(*event, CommandId::LeaveText))
        Q_EMIT escapePressed();
    else if (isKeyOf(*event, CommandId::EditPreviousLine))
        Q_EMIT shiftTabPressed();
    else if (isKeyOf(*event, CommandId::EditNextLine))
        Q_EMIT tabPressed();
    else if (isKeyOf(*event, CommandId::Stress))
        Q_EMIT stressShortcut();
    else if (event->matches(QKeySequence::Undo) && !document()->isUndoAvailable())
        Q_EMIT undoRequested();
    else if (event->matches(QKeySequence::Redo) && !document()->isRedoAvailable())
        Q_EMIT redoRequested();
    else
        QTextEdit::keyPressEvent(event);
}

void ScriptTextField::mousePressEvent(QMouseEvent *event) {
    Q_EMIT clicked(event->modifiers());
    if (m_allowsEditing)
        QTextEdit::mousePressEvent(event);
}

void ScriptTextField::mouseDoubleClickEvent(QMouseEvent *event) {
    if (m_allowsEditing)
        QTextEdit::mouseDoubleClickEvent(event);
    else if (event->button() == Qt::LeftButton)
        Q_EMIT editRequested(event->position().toPoint());
}

void ScriptTextField::wheelEvent(QWheelEvent *event) {
    event->ignore();
}

void ScriptTextField::focusInEvent(QFocusEvent *event) {
    QTextEdit::focusInEvent(event);
    Q_EMIT sourceSelectionChanged();
}

void ScriptTextField::focusOutEvent(QFocusEvent *event) {
    QTextEdit::focusOutEvent(event);
    // Don't stop editing for a menu or another window: the caret returns here.
    const bool isTemporary = event->reason() == Qt::PopupFocusReason || event->reason() == Qt::MenuBarFocusReason ||
                             event->reason() == Qt::ActiveWindowFocusReason;
    if (m_allowsEditing && !isTemporary)
        Q_EMIT editingEnded();
}

void ScriptTextField::insertFromMimeData(const QMimeData *source) {
    if (!source->hasText())
        return;
    const QString pasted = source->text();
    if (!CutTextMark::isTooLong(document()->characterCount() + pasted.size()))
        return insertPlainText(pasted);
    const controller::TextRange selection = sourceSelection();
    setSourceText(sourceText().replace(selection.location, selection.length, pasted));
    Q_EMIT textEdited();
    Q_EMIT wholeTextRequested();
}

void ScriptTextField::dragEnterEvent(QDragEnterEvent *event) {
    // The row handles dropped files.
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QTextEdit::dragEnterEvent(event);
}

void ScriptTextField::applyScriptFont() {
    const QFont font = Theme::scriptFont();
    if (document()->defaultFont() == font)
        return;
    document()->setDefaultFont(font);
    // The placeholder uses the widget's font.
    setFont(font);
}

} // namespace orlenta::shell
