#pragma once

#include <functional>
#include <optional>

#include "controller/script/TextRange.h"
#include "shell/editor/row/LineRowContent.h"
#include "shell/editor/row/PlainTextField.h"

namespace orlenta::shell {

/// Edits the text of one line as plain text. Until editing is allowed, it takes no focus and only reports clicks.
/// Subclasses that show more than the plain text override the virtual functions, which all use positions in the line's
/// text.
class ScriptTextField : public PlainTextField {
    Q_OBJECT
public:
    using Factory = std::function<ScriptTextField *(QWidget *parent)>;

    explicit ScriptTextField(QWidget *parent = nullptr);

    [[nodiscard]] virtual QString sourceText() const;
    /// Replaces the text and clears the field's own undo history.
    virtual void setSourceText(const QString &text);
    void showText(const QString &text) override;
    [[nodiscard]] virtual controller::TextRange sourceSelection() const;
    virtual void setSourceSelection(const controller::TextRange &range);

    /// Shows this content. The caret stays if the text is the same.
    void setContent(const LineTextContent &content);
    /// Call it before showing another line's text.
    void forgetText();
    [[nodiscard]] bool allowsEditing() const { return m_allowsEditing; }
    /// Clears the field's undo history once the typing has become a step of the project's undo.
    void clearTypingUndo();
    /// Puts the caret at a point of the viewport.
    void placeCaretAt(const QPoint &point);
    /// Applies the script font at the current interface scale. The owner must call this when the application font
    /// changes, because a field with its own font isn't notified.
    void applyScriptFont();

Q_SIGNALS:
    void sourceSelectionChanged();
    /// A press of the left button at a point of the viewport, before the field handles it. May begin editing.
    void clicked(Qt::KeyboardModifiers modifiers, const QPoint &point);
    /// A double click while editing is off.
    void editRequested(const QPoint &point);
    void editingEnded();
    void escapePressed();
    void tabPressed();
    void shiftTabPressed();
    /// Alt+Shift+S toggles the stress of the selection.
    void stressShortcut();
    /// Undo or redo when the field has nothing to undo or redo itself.
    void undoRequested();
    void redoRequested();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void setAllowsEditing(bool allowsEditing);

    /// Empty until set, and after forgetText().
    std::optional<LineTextContent> m_content;
    bool m_allowsEditing = false;
    /// The last press began editing.
    bool m_pressBeganEditing = false;
};

} // namespace orlenta::shell
