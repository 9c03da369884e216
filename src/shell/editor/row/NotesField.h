#pragma once

#include <QtWidgets/QTextEdit>

#include "shell/controls/CutTextMark.h"

namespace orlenta::shell {

/// Edits a line's notes as plain text. Reports every change immediately, so that nothing is lost however the user
/// leaves.
class NotesField final : public QTextEdit {
    Q_OBJECT
public:
    explicit NotesField(QWidget *parent = nullptr);

    /// Shows the line's notes without reporting a change. If they are the same, the caret and the undo history stay.
    void setNotes(const QString &notes);
    /// The height of the text at this width, in pixels; at least one line.
    [[nodiscard]] int heightForTextWidth(int width);
    /// Only the start of the notes is shown, which can't be edited here.
    [[nodiscard]] bool isCut() const { return m_cut->isCut(); }

Q_SIGNALS:
    void notesEdited(const QString &notes);
    void entered();
    void left();
    /// The user wants to see or edit all of notes that are too long for the field.
    void wholeTextRequested();

protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;
    void dragEnterEvent(QDragEnterEvent *event) override;

private:
    void applyColors();
    void followText();
    [[nodiscard]] QString text() const;

    void showText(const QString &notes);

    CutTextMark *m_cut;
    bool m_isUpdating = false;
    /// The line's notes, and the field's version of them, which has its own line endings.
    QString m_notes;
    QString m_text;
};

} // namespace orlenta::shell
