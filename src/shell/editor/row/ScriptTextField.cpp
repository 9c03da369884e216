#include "shell/editor/row/ScriptTextField.h"

#include <algorithm>
#include <utility>

#include <QtGui/QKeyEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QScrollBar>

#include "shell/menus/CommandActions.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

ScriptTextField::ScriptTextField(QWidget *parent) : PlainTextField(parent) {
    setTabChangesFocus(false);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::NoTextInteraction);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setCursor(Qt::ArrowCursor);
    setPlaceholderText(QStringLiteral("Write or paste what this line says"));
    setAccessibleName(QStringLiteral("Line text"));
    const auto selectionMoved = [this] {
        if (!isShowingText() && hasFocus())
            Q_EMIT sourceSelectionChanged();
    };
    connect(this, &QTextEdit::cursorPositionChanged, this, selectionMoved);
    connect(this, &QTextEdit::selectionChanged, this, selectionMoved);
    applyScriptFont();
}

QString ScriptTextField::sourceText() const {
    return text();
}

void ScriptTextField::setSourceText(const QString &text) {
    showText(text);
}

void ScriptTextField::showText(const QString &text) {
    PlainTextField::showText(text);
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    QTextBlockFormat format;
    format.setLineHeight(120, QTextBlockFormat::ProportionalHeight);
    cursor.mergeBlockFormat(format);
    clearTypingUndo();
}

controller::TextRange ScriptTextField::sourceSelection() const {
    const QTextCursor cursor = textCursor();
    const qsizetype start = storedText().storedPosition(cursor.selectionStart());
    return {start, storedText().storedPosition(cursor.selectionEnd()) - start};
}

void ScriptTextField::setSourceSelection(const controller::TextRange &range) {
    const auto position = [this](qsizetype inText) {
        const qsizetype last = document()->characterCount() - 1;
        return static_cast<int>(std::clamp<qsizetype>(storedText().rawPosition(inText), 0, last));
    };
    QTextCursor cursor = textCursor();
    cursor.setPosition(position(range.location));
    cursor.setPosition(position(range.location + range.length), QTextCursor::KeepAnchor);
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

bool ScriptTextField::event(QEvent *event) {
    // Accept these keys so that the window's menu doesn't handle them first.
    if (event->type() == QEvent::ShortcutOverride && m_allowsEditing) {
        auto *key = static_cast<QKeyEvent *>(event);
        if (isKeyOf(*key, CommandId::LeaveText) || isKeyOf(*key, CommandId::Stress)) {
            event->accept();
            return true;
        }
    }
    return PlainTextField::event(event);
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
        PlainTextField::keyPressEvent(event);
}

void ScriptTextField::mousePressEvent(QMouseEvent *event) {
    const bool wasEditing = m_allowsEditing;
    if (event->button() == Qt::LeftButton)
        Q_EMIT clicked(event->modifiers(), event->position().toPoint());
    m_pressBeganEditing = m_allowsEditing && !wasEditing;
    if (m_allowsEditing)
        PlainTextField::mousePressEvent(event);
}

void ScriptTextField::mouseDoubleClickEvent(QMouseEvent *event) {
    // The first click of a double click on another line selects the line, the second puts the caret into it.
    if (m_pressBeganEditing)
        return;
    if (m_allowsEditing)
        PlainTextField::mouseDoubleClickEvent(event);
    else if (event->button() == Qt::LeftButton)
        Q_EMIT editRequested(event->position().toPoint());
}

void ScriptTextField::focusInEvent(QFocusEvent *event) {
    PlainTextField::focusInEvent(event);
    Q_EMIT sourceSelectionChanged();
}

void ScriptTextField::focusOutEvent(QFocusEvent *event) {
    PlainTextField::focusOutEvent(event);
    if (m_allowsEditing && !isTemporary(event->reason()))
        Q_EMIT editingEnded();
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
