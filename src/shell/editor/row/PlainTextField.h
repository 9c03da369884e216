#pragma once

#include <QtWidgets/QTextEdit>

#include "shell/controls/CutTextMark.h"
#include "shell/editor/row/StoredText.h"

namespace orlenta::shell {

/// Edits plain text without a frame or scroll bars of its own. Typing changes what is typed and nothing else: the other
/// line breaks and blanks of the text stay as they are stored. Of a text that is too long to lay out at once it shows
/// the start, which can't be edited here.
class PlainTextField : public QTextEdit {
    Q_OBJECT
public:
    explicit PlainTextField(QWidget *parent = nullptr);

    /// The text with everything that was typed. Unlike toPlainText(), doesn't change any character.
    [[nodiscard]] const QString &text() const { return m_text.text(); }
    /// Shows another text without reporting a change. Clears the field's undo history.
    virtual void showText(const QString &text);
    /// Only the start of the text is shown.
    [[nodiscard]] bool isCut() const { return m_cut->isCut(); }
    /// The height of the text at this width, in pixels; at least one line.
    [[nodiscard]] int heightForTextWidth(int width);

Q_SIGNALS:
    /// The user has changed the text.
    void textEdited();
    /// The user wants to see or edit all of a text that is too long for the field.
    void wholeTextRequested();

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

    CutTextMark *m_cut;
    StoredText m_text;
    /// Edited, and not reported yet.
    bool m_isEdited = false;
    bool m_isShowing = false;
};

} // namespace orlenta::shell
