#pragma once

#include <QtCore/QMetaObject>
#include <QtCore/QUrl>
#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "shell/editor/LineRowContent.h"
#include "shell/editor/ScriptTextField.h"

class QLabel;
class QPushButton;
class QToolButton;

namespace orlenta::shell {

class BusyIndicator;
class DirectionStrip;
class NotesField;
class WaveformBarsView;

/// Where everything stands in a row of a given width.
struct LineRowPlaces {
    QRect card;
    QRect stripe;
    QRect number;
    QRect name;
    QRect mode;
    QRect notesButton;
    QRect generate;
    QRect busy;
    QRect voiceHint;
    QRect text;
    QRect notes;
    QRect direction;
    QRect play;
    QRect waveform;
    QRect duration;
    QRect takes;
    int height = 0;
};

/// One line of the script as a card: the cast voice's stripe and name, the text, the generate button and the line's
/// audio, its notes, and the strip of its spoken direction. An audio file can be dropped on it. It holds nothing of its
/// own: it shows the content it is given, is handed from line to line by the list's pool, and only tells what the user
/// wants.
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
    void setProgress(RowAudio audio, double progress);
    /// What ties the row to its line's changes; the one before is undone.
    void setWatch(const QMetaObject::Connection &watch);

    [[nodiscard]] ScriptTextField &textField() const { return *m_text; }
    /// Whether the list has the keyboard, which the current row shows.
    void setListHasFocus(bool listHasFocus);
    /// The list's keys act on this row.
    [[nodiscard]] bool hasListFocus() const { return m_content.isCurrent && m_listHasFocus; }
    /// The row must stay with its line: it holds the focus, or its menu is open.
    [[nodiscard]] bool isPinned() const;
    /// Gives the keyboard to the row's first control.
    void focusControls();
    void openTakeMenu();
    /// Puts the caret into the line's notes, which show from then on.
    void editNotes();

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;

    /// Heights of rows of a width, told from the length of their text without laying it out.
    class Estimator final {
    public:
        Estimator(const QWidget *list, int width);
        [[nodiscard]] int height(const LineOutline &outline) const;

    private:
        double m_charactersPerLine = 1.0;
        double m_lineHeight = 0.0;
        int m_bare = 0;
        int m_audio = 0;
        int m_direction = 0;
        int m_notes = 0;
    };

Q_SIGNALS:
    void clicked(Qt::KeyboardModifiers modifiers, bool inTextField);
    void editRequested(const QPoint &textPoint);
    void textEdited();
    void generateRequested();
    void playRequested();
    void stopRequested();
    void seekRequested(double fraction);
    void directionWished(orlenta::controller::CommandId wish);
    void directionSeekRequested(double fraction);
    void filesDropped(const QList<QUrl> &files);
    void notesEdited(const QString &notes);
    /// The caret is in the notes.
    void notesEntered();
    void deleteTakeRequested();
    void takeChosen(const model::TakeId &id);
    void menuRequested(const QPoint &globalPosition);
    /// Escape in one of the row's controls.
    void controlsLeft();
    void heightChanged();
    /// What the row shows of its line is out of date.
    void lineChanged();

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
    void makeControls(const ScriptTextField::Factory &makeTextField);
    void showText(const LineRowContent &before);
    void showGeneration();
    void showAudio();
    void showTakes();
    void showNames();
    void nameRow();
    [[nodiscard]] QColor ground() const;
    void tellSelection();
    bool pressControl(QWidget *control, const QKeyEvent &event);
    void makeDirectionControls();
    void showDirection();
    void makeNotes();
    void showNotes();
    void nameDirectionControls();
    void setDropTarget(bool isDropTarget);
    void applyColors();
    [[nodiscard]] QFont nameFont() const;
    [[nodiscard]] LineRowPlaces placesFor(int width) const;
    int placeHeader(LineRowPlaces &places, const QRect &inner) const;
    void placeAudio(LineRowPlaces &places, const QRect &inner) const;
    void layOut();
    [[nodiscard]] QList<QWidget *> focusableControls() const;
    void moveFocus(QWidget *from, int step);

    LineRowContent m_content;
    QMetaObject::Connection m_watch;
    ScriptTextField *m_text = nullptr;
    QToolButton *m_mode = nullptr;
    QToolButton *m_notesButton = nullptr;
    QPushButton *m_generate = nullptr;
    QLabel *m_voiceHint = nullptr;
    BusyIndicator *m_busy = nullptr;
    QToolButton *m_play = nullptr;
    WaveformBarsView *m_waveform = nullptr;
    QLabel *m_duration = nullptr;
    QToolButton *m_takes = nullptr;
    /// Made when first needed, as are the notes: most rows do without.
    DirectionStrip *m_direction = nullptr;
    NotesField *m_notes = nullptr;
    LineRowPlaces m_places;
    bool m_isMenuOpen = false;
    bool m_isDropTarget = false;
    bool m_listHasFocus = false;
};

} // namespace orlenta::shell
