#pragma once

#include <QtWidgets/QTextEdit>

namespace orlenta::shell {

/// The notes of one line, as plain text below the script. Every change is told at once, so that nothing is lost
/// whichever way the user leaves.
class NotesField final : public QTextEdit {
    Q_OBJECT
public:
    explicit NotesField(QWidget *parent = nullptr);

    /// Puts the line's notes in place, which is no change of the user's. The caret and what can be undone stay when
    /// they are the same.
    void setNotes(const QString &notes);
    /// Height of the text at a width, in pixels; at least one line.
    [[nodiscard]] int heightForTextWidth(int width);

Q_SIGNALS:
    void notesEdited(const QString &notes);
    void entered();
    void left();

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

    bool m_isUpdating = false;
    /// The line's notes, and what the field made of them: it has its own line ends.
    QString m_notes;
    QString m_text;
};

} // namespace orlenta::shell
