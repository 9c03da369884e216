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
}
namespace orlenta::controller {
class DirectionRecordings;
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

class LineRow;

/// What the user can do with the spoken direction and the notes of lines, in terms of the project. Main thread.
class DirectionCommands final : public QObject {
    Q_OBJECT
public:
    explicit DirectionCommands(controller::ProjectSession &session, QObject *parent = nullptr);

    /// Ties a row's notes and the files dropped on it to the project, for whichever line the row shows.
    void connectRow(LineRow *row);
    /// The commands, in the order of menus.
    [[nodiscard]] static const QList<CommandId> &ids();
    /// How a command stands for a line: "Stop Recording" while the line records, say. Disabled without a line.
    struct Standing {
        QString title;
        bool isEnabled = false;
    };
    [[nodiscard]] Standing standing(CommandId command, const std::optional<model::LineId> &id) const;
    /// `parent` is what a panel stands above.
    void carryOut(CommandId command, const model::LineId &id, QWidget *parent);
    /// Plays the line's direction from that share of it on, 0 to 1.
    void seek(const model::LineId &id, double fraction);
    /// Whether something may be played now; tells the user why not while a take records.
    [[nodiscard]] bool mayPlay();
    void importFiles(const QList<QUrl> &files, const model::LineId &id);
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
