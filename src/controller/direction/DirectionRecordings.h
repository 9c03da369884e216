#pragma once

#include <optional>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "audio/recording/AudioRecorder.h"
#include "controller/direction/KeptRecordings.h"
#include "model/DirectionMode.h"
#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// The lines' recorders, created on a line's first recording. They outlive the rows, so a take continues while its line
/// is scrolled out of view. A finished take goes on its line, even a partial one that ended by itself. Deleting a line
/// ends its take, which is kept in case the line comes back. An error stays until the next take, an import, a change of
/// the line's mode, or the sound server's return. Main thread.
class DirectionRecordings final : public QObject {
    Q_OBJECT
public:
    struct State {
        /// Also true while the microphone is being opened.
        bool isRecording = false;
        /// Of the current or last take, in seconds.
        double duration = 0.0;
        /// For the user; empty if there is none.
        QString error;
    };

    DirectionRecordings(ProjectController &controller, const audio::AudioRecorder::Parts &parts);
    ~DirectionRecordings() override;

    [[nodiscard]] State state(const model::LineId &id) const;
    [[nodiscard]] bool isRecording() const;
    /// The line that is being recorded or whose microphone is being opened, if any.
    [[nodiscard]] std::optional<model::LineId> recordingLine() const;
    /// Starts recording this line. A take of another line ends and goes on that line.
    void start(const model::LineId &id);
    void stop(const model::LineId &id);

    /// Recordings that aren't on their lines, because a disk was full or missing.
    [[nodiscard]] KeptRecordings &kept() { return m_kept; }
    /// No take is running or waiting for its final samples.
    [[nodiscard]] bool isFinished() const;
    /// Stops running takes, and prevents new ones until allow().
    void finish();
    void allow() { m_isAllowed = true; }

Q_SIGNALS:
    void changed(const orlenta::model::LineId &id);
    /// Show the line to the user: its recording has started, or something is wrong with it.
    void attentionWanted(const orlenta::model::LineId &id);
    /// The user must allow the microphone in the desktop's settings.
    void microphoneSettingsWanted();
    /// A take has ended.
    void isFinishedChanged();

private:
    struct FinishedTake {
        QUrl url;
        /// Seconds.
        double duration = 0.0;
    };

    /// The circumstances in which a line's error appeared.
    struct ShownError {
        /// The sound server was unavailable then or has been since.
        bool isServerFault = false;
        model::DirectionMode mode = model::DirectionMode::Text;
    };

    audio::AudioRecorder &recorderOf(const model::LineId &id);
    void endOtherTakes(const model::LineId &id);
    void tellError(const model::LineId &id);
    void dismissError(const model::LineId &id);
    void followServer();
    void followModes();
    [[nodiscard]] model::DirectionMode modeOf(const model::LineId &id) const;
    void attach(const QUrl &take, double duration, const model::LineId &id);
    void followLines();

    ProjectController &m_controller;
    audio::AudioRecorder::Parts m_parts;
    KeptRecordings m_kept;
    QHash<model::LineId, audio::AudioRecorder *> m_recorders;
    QHash<model::LineId, ShownError> m_shownErrors;
    QHash<model::LineId, FinishedTake> m_takesOfGoneLines;
    bool m_isAllowed = true;
};

} // namespace orlenta::controller
