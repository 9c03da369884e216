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

/// What the user can do in the script list, in terms of the project: the one place that rows, keys, toolbar and menus
/// call. Main thread.
class ScriptCommands final : public QObject {
    Q_OBJECT
public:
    enum class ClickPlace { Row, TextField };

    explicit ScriptCommands(controller::ProjectSession &session, QObject *parent = nullptr);

    /// Ties a row's wishes to the project, for whichever line the row shows.
    void connectRow(LineRow *row);

    void click(const model::LineId &id, Qt::KeyboardModifiers modifiers, ClickPlace place);
    /// Selects the line alone and puts the caret into it.
    void edit(const model::LineId &id);
    /// With one selected line, edits that one.
    void editSelected();
    /// Makes a step of what was typed and leaves the text.
    void endEditing();
    /// Goes on editing in the next or the previous line, if there is one.
    void editNeighbour(int step);

    /// One of the commands that a row has a button for. `parent` is what a panel stands above.
    void carryOut(CommandId command, const model::LineId &id, QWidget *parent);
    void play(const model::LineId &id);
    /// Plays the line's sound from that share of it on, 0 to 1.
    void seek(const model::LineId &id, controller::AudioKind kind, double fraction);
    void stop();
    /// Stops what plays; otherwise plays the selection: one line, or those of several that have audio.
    void togglePlayback();
    /// Plays the lines of the tab that have audio, one after the other.
    void playWholeTab();
    [[nodiscard]] bool canPlaySelection() const;

    void generate(const model::LineId &id);
    /// Puts another take in use. What plays of the one before ends.
    void switchTake(const model::LineId &id, const model::TakeId &take);
    void deleteTake(const model::LineId &id);
    [[nodiscard]] DirectionCommands &direction() { return m_direction; }
    /// Puts a palette item into the selected line, at the caret of the text that has the keyboard.
    void insertTag(const tags::TagItem &item);
    void openTakeMenu(const model::LineId &id, const QPoint &globalPosition, QWidget *parent);
    void openLineMenu(const model::LineId &id, const QPoint &globalPosition, QWidget *parent);

    /// The point of a text field at which the next editing begins, for a caret set by the mouse.
    [[nodiscard]] std::optional<QPoint> takeCaretPoint();

Q_SIGNALS:
    /// The keyboard belongs to the list again.
    void listFocusRequested();

private:
    void connectText(LineRow *row);
    [[nodiscard]] QList<audio::PlaybackLine> playable(const QList<model::LineId> &ids) const;
    void editAt(const model::LineId &id, const QPoint &point);

    controller::ProjectSession &m_session;
    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    DirectionCommands m_direction;
    QElapsedTimer m_sinceTextFieldClick;
    std::optional<QPoint> m_caretPoint;
};

} // namespace orlenta::shell
