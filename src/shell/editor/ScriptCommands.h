#pragma once

#include <optional>

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPoint>

#include "controller/takes/AudioKind.h"
#include "model/Ids.h"
#include "shell/editor/DirectionCommands.h"

class QWidget;

namespace orlenta::audio {
class PlaybackController;
struct PlaybackLine;
} // namespace orlenta::audio
namespace orlenta::controller {
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller
namespace orlenta::tags {
struct TagItem;
}

namespace orlenta::shell {

class LineRow;

/// The commands of the script list. Rows, keys, toolbar and menus all call these. Main thread.
class ScriptCommands final : public QObject {
    Q_OBJECT
public:
    explicit ScriptCommands(controller::ProjectSession &session, QObject *parent = nullptr);

    /// Connects a row's signals to the project, whichever line the row shows.
    void connectRow(LineRow *row);

    /// A click on the row, or in its text at a point of the viewport. A click in the text of the line that is selected
    /// alone begins editing there.
    void click(const model::LineId &id, Qt::KeyboardModifiers modifiers,
               const std::optional<QPoint> &textPoint = std::nullopt);
    /// Selects only this line and puts the caret into it.
    void edit(const model::LineId &id);
    /// Edits the selected line if there is exactly one.
    void editSelected();
    /// Turns the typed text into an undo step and leaves the text.
    void endEditing();
    /// Continues editing in the next or previous line, if there is one.
    void editNeighbour(int step);

    /// Carries out one of the commands that a row has buttons for. `parent` is the parent of its panels.
    void carryOut(CommandId command, const model::LineId &id, QWidget *parent);
    void play(const model::LineId &id);
    /// Plays the line's audio from `fraction` of its length, 0 to 1.
    void seek(const model::LineId &id, controller::AudioKind kind, double fraction);
    void stop();
    /// Stops playback. If nothing plays, plays the selected line, or those of several selected lines that have audio.
    void togglePlayback();
    /// Plays all lines of the tab that have audio, in order.
    void playWholeTab();
    [[nodiscard]] bool canPlaySelection() const;

    void generate(const model::LineId &id);
    /// Makes another take the active one and stops playback of the previous one.
    void switchTake(const model::LineId &id, const model::TakeId &take);
    void deleteTake(const model::LineId &id);
    [[nodiscard]] DirectionCommands &direction() { return m_direction; }
    /// Inserts a palette item into the selected line, at the caret if its text has the focus.
    void insertTag(const tags::TagItem &item);
    void openTakeMenu(const model::LineId &id, const QPoint &globalPosition, QWidget *parent);
    void openLineMenu(const model::LineId &id, const QPoint &globalPosition, QWidget *parent);

    /// Returns and clears the clicked point where the caret goes when editing starts, in text field coordinates.
    [[nodiscard]] std::optional<QPoint> takeCaretPoint();

Q_SIGNALS:
    /// Return the focus to the list.
    void listFocusRequested();

private:
    void connectText(LineRow *row);
    [[nodiscard]] QList<audio::PlaybackLine> playable(const QList<model::LineId> &ids) const;
    void refuse(CommandId command);
    void editAt(const model::LineId &id, const QPoint &point);

    controller::ProjectSession &m_session;
    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    DirectionCommands m_direction;
    QElapsedTimer m_sinceTextFieldClick;
    std::optional<QPoint> m_caretPoint;
};

} // namespace orlenta::shell
