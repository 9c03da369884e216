#pragma once

#include <optional>

#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtGui/QKeySequence>

#include "model/Ids.h"
#include "shell/editor/row/LineRowContent.h"
#include "shell/menus/CommandActions.h"

class QMenu;
class QWidget;

namespace orlenta::audio {
class PlaybackController;
class SharedMicrophone;
} // namespace orlenta::audio
namespace orlenta::base {
class UserDefaults;
}
namespace orlenta::controller {
class DirectionRecordings;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class LineRow;

/// The commands for the direction and the notes of lines. Main thread.
class DirectionCommands final : public QObject {
    Q_OBJECT
public:
    explicit DirectionCommands(controller::ProjectSession &session, QObject *parent = nullptr);

    /// Connects a row's notes and dropped files to the project, whichever line the row shows.
    void connectRow(LineRow *row);
    /// The commands in menu order.
    [[nodiscard]] static const QList<CommandId> &ids();
    /// A command's title and state for a line, such as "Stop Recording" while the line records. Disabled without a
    /// line.
    struct CommandState {
        QString title;
        bool isEnabled = false;
    };
    [[nodiscard]] CommandState stateOf(CommandId command, const std::optional<model::LineId> &id) const;
    /// Carries out the command. `parent` is the parent of its panels.
    void carryOut(CommandId command, const model::LineId &id, QWidget *parent);
    /// Plays the line's direction from `fraction` of its length, 0 to 1.
    void seek(const model::LineId &id, double fraction);
    /// Whether playing is allowed. While any window records a take it isn't, and the user gets a message.
    [[nodiscard]] bool mayPlay();
    void importFiles(const QList<QUrl> &files, const model::LineId &id);
    void addToMenu(QMenu &menu, const model::LineId &id, QWidget *parent);

Q_SIGNALS:
    /// Put the caret into the line's notes.
    void notesRequested(const orlenta::model::LineId &id);

private:
    void withdrawRefusal();
    void toggleRecording(const model::LineId &id);
    void togglePlayback(const model::LineId &id);
    void chooseFile(const model::LineId &id, QWidget *parent);
    void deleteAudio(const model::LineId &id);
    void switchMode(const model::LineId &id);
    [[nodiscard]] bool isVoiceDirected(const model::LineId &id) const;
    /// Whether the row shows the direction. Commands mustn't act on one that the user can't see.
    [[nodiscard]] bool showsDirection(const model::LineId &id) const;
    [[nodiscard]] QUrl audioURL(const model::LineId &id) const;

    controller::ProjectController &m_controller;
    audio::PlaybackController &m_playback;
    controller::DirectionRecordings &m_recordings;
    base::UserDefaults &m_defaults;
    const audio::SharedMicrophone &m_microphone;
};

} // namespace orlenta::shell
