#pragma once

#include <optional>

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtGui/QKeySequence>

#include "model/Ids.h"
#include "shell/editor/LineRowContent.h"

class QMenu;
class QWidget;

namespace orlenta::audio {
class PlaybackController;
}
namespace orlenta::controller {
class DirectionRecordings;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class LineRow;

/// One of a line's direction commands as menus show it.
struct DirectionCommand {
    DirectionWish wish = DirectionWish::ToggleRecording;
    QString icon;
    QString title;
    /// What does the same while the script list has the keyboard.
    QKeySequence key;
    bool isEnabled = false;
};

/// What the user can do with the spoken direction and the notes of lines, in terms of the project. Main thread.
class DirectionCommands final : public QObject {
    Q_OBJECT
public:
    explicit DirectionCommands(controller::ProjectSession &session, QObject *parent = nullptr);

    /// Ties a row's wishes to the project, for whichever line the row shows.
    void connectRow(LineRow *row);
    /// `parent` is what a panel stands above.
    void carryOut(DirectionWish wish, const model::LineId &id, QWidget *parent);
    /// Plays the line's direction from that share of it on, 0 to 1.
    void seek(const model::LineId &id, double fraction);
    /// Whether something may be played now; tells the user why not while a take records.
    [[nodiscard]] bool mayPlay();
    void importFiles(const QList<QUrl> &files, const model::LineId &id);
    /// All of them, in the order of menus, as they stand for the line; without one none is enabled.
    [[nodiscard]] QList<DirectionCommand> menuCommands(const std::optional<model::LineId> &id) const;
    void addToMenu(QMenu &menu, const model::LineId &id, QWidget *parent);

Q_SIGNALS:
    /// The caret belongs into the notes of the line.
    void notesRequested(const orlenta::model::LineId &id);

private:
    void forgetRefusal();
    void toggleRecording(const model::LineId &id);
    void togglePlayback(const model::LineId &id);
    void chooseFile(const model::LineId &id, QWidget *parent);
    void deleteAudio(const model::LineId &id);
    void switchMode(const model::LineId &id);
    [[nodiscard]] bool isVoiceDirected(const model::LineId &id) const;
    /// Whether the line's direction is to be seen, so that the user knows what is acted on.
    [[nodiscard]] bool showsDirection(const model::LineId &id) const;
    [[nodiscard]] QUrl audioURL(const model::LineId &id) const;

    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    controller::DirectionRecordings &m_recordings;
};

} // namespace orlenta::shell
