#pragma once

#include <QtCore/QList>
#include <QtWidgets/QDialog>

class QLabel;
class QPlainTextEdit;
class QToolButton;

namespace orlenta::shell {

/// All of a text that is shown cut elsewhere, to read and copy, or to edit. Shows a very long text in parts, so that
/// neither opening it nor a key takes longer than with a short one.
class WholeTextDialog final : public QDialog {
    Q_OBJECT
public:
    enum class Use { Read, Edit };

    WholeTextDialog(const QString &title, const QString &text, Use use, QWidget *parent);

    /// The whole text, with all edits.
    [[nodiscard]] const QString &text() const { return m_text; }
    [[nodiscard]] QPlainTextEdit &field() const { return *m_field; }

Q_SIGNALS:
    /// The user has changed the text.
    void textEdited(const QString &text);

private:
    void showPart(qsizetype part);
    void takeEdit();
    /// Puts a text too long for a part in place of the selection.
    void insert(const QString &pasted);
    void copyAll() const;
    [[nodiscard]] QWidget *makePager();

    QString m_text;
    /// Where the parts begin, and the end of the text.
    QList<qsizetype> m_bounds;
    qsizetype m_part = 0;
    /// The field's text as of the last edit.
    QString m_shown;
    bool m_isFilling = false;
    QPlainTextEdit *m_field = nullptr;
    QWidget *m_pager = nullptr;
    QToolButton *m_previous;
    QToolButton *m_next;
    QLabel *m_place;
};

} // namespace orlenta::shell
