#pragma once

#include <QtWidgets/QTextEdit>

#include "shell/editor/row/StoredText.h"

namespace orlenta::shell {

/// Edits plain text without a frame or scroll bars of its own. Typing changes what is typed and nothing else: the other
/// line breaks and blanks of the text stay as they are stored.
class PlainTextField : public QTextEdit {
    Q_OBJECT
public:
    explicit PlainTextField(QWidget *parent = nullptr);

    /// The text with everything that was typed. Unlike toPlainText(), doesn't change any character.
    [[nodiscard]] const QString &text() const { return m_text.text(); }
    /// Shows another text without reporting a change. Clears the field's undo history.
    void showText(const QString &text);
    /// The height of the text at this width, in pixels; at least one line.
    [[nodiscard]] int heightForTextWidth(int width);

Q_SIGNALS:
    /// The user has changed the text.
    void textEdited();

protected:
    /// The stored text whose positions are those of text().
    [[nodiscard]] const StoredText &storedText() const { return m_text; }
    /// True while showText() runs.
    [[nodiscard]] bool isShowingText() const { return m_isShowing; }
    /// The caret returns here from a menu or another window.
    [[nodiscard]] static bool isTemporary(Qt::FocusReason reason);

    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    [[nodiscard]] QMimeData *createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    void takeOverEdit(int place);

    StoredText m_text;
    /// Edited, and not reported yet.
    bool m_isEdited = false;
    bool m_isShowing = false;
};

} // namespace orlenta::shell
