#pragma once

#include <QtCore/QMetaObject>
#include <QtCore/QUrl>
#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "controller/takes/AudioKind.h"
#include "shell/editor/row/LineRowContent.h"
#include "shell/editor/row/RowCard.h"
#include "shell/editor/row/RowPlaces.h"
#include "shell/editor/row/ScriptTextField.h"

namespace orlenta::shell {

class DirectionStrip;
class LineHeader;
class NotesField;
class RowStatusMark;
class TakeStrip;

/// One line of the script: header, text, notes, direction strip, take strip and status. A compact row shows one line of
/// text with columns, and opens while its text is edited or one of its controls has the focus. Accepts dropped audio
/// files. Stateless: shows the given content and emits what the user requests. The list's pool reuses it for other
/// lines.
class LineRow final : public QWidget {
    Q_OBJECT
public:
    explicit LineRow(const ScriptTextField::Factory &makeTextField, QWidget *parent = nullptr);
    ~LineRow() override;

    [[nodiscard]] const model::LineId &lineId() const { return m_content.id; }
    [[nodiscard]] const LineRowContent &content() const { return m_content; }
    /// Shows this content. The caret stays unless it is another line's content.
    void setContent(const LineRowContent &content);
    /// Moves only the playhead. `progress` is 0 to 1.
    void setProgress(controller::AudioKind kind, double progress);
    /// Sets the connection to the line's changes, and disconnects the previous one.
    void setWatch(const QMetaObject::Connection &watch);

    [[nodiscard]] ScriptTextField &textField() const { return *m_text; }
    /// Tells the row whether the list has the focus. The current row shows it.
    void setListHasFocus(bool listHasFocus);
    /// Whether the list's keys act on this row.
    [[nodiscard]] bool hasListFocus() const { return m_content.isCurrent && m_listHasFocus; }
    /// Whether the row must stay with its line, because it has the focus.
    [[nodiscard]] bool isPinned() const;
    /// Focuses the row's first control.
    void focusControls();
    /// Shows the line's notes and puts the caret into them.
    void editNotes();

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override { return placesFor(width).height; }

Q_SIGNALS:
    void clicked(Qt::KeyboardModifiers modifiers);
    /// A press in the text, at a point of its viewport.
    void textClicked(Qt::KeyboardModifiers modifiers, const QPoint &textPoint);
    void editRequested(const QPoint &textPoint);
    void commandRequested(orlenta::controller::CommandId command);
    void seekRequested(orlenta::controller::AudioKind kind, double fraction);
    void takeMenuRequested(const QPoint &globalPosition);
    void menuRequested(const QPoint &globalPosition);
    void filesDropped(const QList<QUrl> &files);
    void notesEdited(const QString &notes);
    /// The user wants to see or edit all of a text or of notes that are too long for the row.
    void wholeTextRequested();
    void wholeNotesRequested();
    /// The caret has entered the notes.
    void notesEntered();
    /// The user pressed Escape in one of the row's controls.
    void controlsLeft();
    void heightChanged();

protected:
    bool event(QEvent *event) override;
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
    void connectText();
    void handleKeysOf(const QList<QWidget *> &controls);
    void showBackground();
    void showDirection();
    void showNotes();
    void makeNotes();
    void showNames(const LineRowContent &before);
    void setDropTarget(bool isDropTarget);
    [[nodiscard]] RowPlaces placesFor(int width) const;
    /// The density that the row has now.
    [[nodiscard]] RowDensity density() const;
    [[nodiscard]] RowLook look() const;
    void showDensity();
    void setOpen(bool isOpen);
    void closeWhenLeft();
    void setHovered(bool isHovered);
    void layOut();
    [[nodiscard]] QList<QWidget *> controls() const;
    void moveFocus(QWidget *from, int step);

    LineRowContent m_content;
    QMetaObject::Connection m_watch;
    /// Below the header, whose buttons reach into the text's margin.
    ScriptTextField *m_text;
    LineHeader *m_header;
    TakeStrip *m_takes;
    RowStatusMark *m_status;
    /// Created on demand, as are the notes: most rows have neither.
    DirectionStrip *m_direction = nullptr;
    NotesField *m_notes = nullptr;
    RowPlaces m_places;
    bool m_isDropTarget = false;
    bool m_listHasFocus = false;
    bool m_isHovered = false;
    /// The user works with the controls of a compact row.
    bool m_isOpen = false;
};

} // namespace orlenta::shell
