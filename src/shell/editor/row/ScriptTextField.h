#pragma once

#include <functional>
#include <optional>

#include <QtWidgets/QTextEdit>

#include "controller/script/TextRange.h"
#include "shell/editor/row/LineRowContent.h"

namespace orlenta::shell {

/// The editable text of one line, as plain text. Editing is off until allowed: until then the field takes no focus and
/// only tells of clicks. A view that shows more than the plain text derives from it and overrides the virtual
/// functions, which all speak in positions of the plain text.
class ScriptTextField : public QTextEdit {
    Q_OBJECT
public:
    using Factory = std::function<ScriptTextField *(QWidget *parent)>;

    explicit ScriptTextField(QWidget *parent = nullptr);

    [[nodiscard]] virtual QString sourceText() const;
    /// Puts the line's text in place; this is not undoable and ends what the field itself could undo.
    virtual void setSourceText(const QString &text);
    [[nodiscard]] virtual controller::TextRange sourceSelection() const;
    virtual void setSourceSelection(const controller::TextRange &range);

    /// Shows this text. The caret stays where the text does.
    void setContent(const LineTextContent &content);
    /// What is shown next is another line's text, which shares nothing with this one.
    void forgetText();
    [[nodiscard]] bool allowsEditing() const { return m_allowsEditing; }
    /// What was typed has become a step of the project's undo: the field forgets its own.
    void clearTypingUndo();
    /// Puts the caret under a point of the viewport.
    void placeCaretAt(const QPoint &point);
    /// Takes the script font at the present interface scale. With a font of its own, the field isn't told of a change
    /// of the application's; its owner is.
    void applyScriptFont();
    /// Height of the text at a width, in pixels; at least one line.
    [[nodiscard]] int heightForTextWidth(int width);

Q_SIGNALS:
    /// The user has changed the text.
    void textEdited();
    void sourceSelectionChanged();
    /// A press in the field, before the field itself handles it.
    void clicked(Qt::KeyboardModifiers modifiers);
    /// A double click while editing isn't allowed.
    void editRequested(const QPoint &point);
    void editingEnded();
    void escapePressed();
    void tabPressed();
    void shiftTabPressed();
    /// Alt+Shift+S: the selection's stress.
    void stressShortcut();
    /// Undo or redo where the field has nothing of its own to take back.
    void undoRequested();
    void redoRequested();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void dragEnterEvent(QDragEnterEvent *event) override;

private:
    void setAllowsEditing(bool allowsEditing);

    /// Nothing yet, or again.
    std::optional<LineTextContent> m_content;
    bool m_allowsEditing = false;
    bool m_isUpdatingFromModel = false;
};

} // namespace orlenta::shell
