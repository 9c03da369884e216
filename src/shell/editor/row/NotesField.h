#pragma once

#include "shell/editor/row/PlainTextField.h"

namespace orlenta::shell {

/// Edits a line's notes as plain text. Reports every change immediately, so that nothing is lost however the user
/// leaves.
class NotesField final : public PlainTextField {
    Q_OBJECT
public:
    explicit NotesField(QWidget *parent = nullptr);

    /// Shows the line's notes without reporting a change. If they are the same, the caret and the undo history stay.
    void setNotes(const QString &notes);
    void showText(const QString &text) override;

Q_SIGNALS:
    void notesEdited(const QString &notes);
    void entered();
    void left();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void applyColors();
};

} // namespace orlenta::shell
