#pragma once

#include <QtCore/QMetaObject>
#include <QtCore/QUrl>
#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "controller/takes/AudioKind.h"
#include "shell/editor/row/LineRowContent.h"
#include "shell/editor/row/ScriptTextField.h"

namespace orlenta::shell {

class DirectionStrip;
class LineHeader;
class NotesField;
class TakeStrip;

/// One line of the script as a card of parts below each other: header, text, notes, the strip of its spoken direction
/// and the strip of its takes. An audio file can be dropped on it. It holds nothing of its own: it shows the content it
/// is given, is handed from line to line by the list's pool, and only tells what the user wants.
class LineRow final : public QWidget {
    Q_OBJECT
public:
    explicit LineRow(const ScriptTextField::Factory &makeTextField, QWidget *parent = nullptr);
    ~LineRow() override;

    [[nodiscard]] const model::LineId &lineId() const { return m_content.id; }
    [[nodiscard]] const LineRowContent &content() const { return m_content; }
    /// Shows this content. Another line's content replaces all; the same line's keeps the caret.
    void setContent(const LineRowContent &content);
    /// Moves the playhead of what plays to that share of it, 0 to 1, and leaves the rest of the row as it is.
    void setProgress(controller::AudioKind kind, double progress);
    /// What ties the row to its line's changes; the one before is undone.
    void setWatch(const QMetaObject::Connection &watch);

    [[nodiscard]] ScriptTextField &textField() const { return *m_text; }
    /// Whether the list has the keyboard, which the current row shows.
    void setListHasFocus(bool listHasFocus);
    /// The list's keys act on this row.
    [[nodiscard]] bool hasListFocus() const { return m_content.isCurrent && m_listHasFocus; }
    /// The row must stay with its line: it holds the focus.
    [[nodiscard]] bool isPinned() const;
    /// Gives the keyboard to the row's first control.
    void focusControls();
    /// Puts the caret into the line's notes, which show from then on.
    void editNotes();

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return placesFor(width).height; }

Q_SIGNALS:
    void clicked(Qt::KeyboardModifiers modifiers, bool inTextField);
    void editRequested(const QPoint &textPoint);
    void commandRequested(orlenta::controller::CommandId command);
    void seekRequested(orlenta::controller::AudioKind kind, double fraction);
    void takeMenuRequested(const QPoint &globalPosition);
    void menuRequested(const QPoint &globalPosition);
    void filesDropped(const QList<QUrl> &files);
    void notesEdited(const QString &notes);
    /// The caret is in the notes.
    void notesEntered();
    /// Escape in one of the row's controls.
    void controlsLeft();
    void heightChanged();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void changeEvent(QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Places {
        QRect card;
        QRect stripe;
        QRect header;
        QRect text;
        QRect notes;
        QRect direction;
        QRect takes;
        int height = 0;
    };

    void connectText();
    void handleKeysOf(const QList<QWidget *> &controls);
    void showGround();
    void showDirection();
    void showNotes();
    void makeNotes();
    void showNames(const LineRowContent &before);
    void setDropTarget(bool isDropTarget);
    [[nodiscard]] Places placesFor(int width) const;
    void layOut();
    [[nodiscard]] QList<QWidget *> controls() const;
    void moveFocus(QWidget *from, int step);

    LineRowContent m_content;
    QMetaObject::Connection m_watch;
    LineHeader *m_header;
    ScriptTextField *m_text;
    TakeStrip *m_takes;
    /// Made when first needed, as are the notes: most rows do without.
    DirectionStrip *m_direction = nullptr;
    NotesField *m_notes = nullptr;
    Places m_places;
    bool m_isDropTarget = false;
    bool m_listHasFocus = false;
};

} // namespace orlenta::shell
