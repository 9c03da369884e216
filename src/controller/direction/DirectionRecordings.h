#pragma once

#include <optional>

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "audio/recording/AudioRecorder.h"
#include "model/DirectionMode.h"
#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// The recorders of a script's lines, each made when its line first records. They outlive the rows, which come and go
/// as the list scrolls, so that a take runs on while its line is out of view. A finished take goes on its line by
/// itself, as does what there is of one that ended on its own. A line that is deleted ends its take, which waits for
/// the line to come back. An error stays until the next take, an import, a switch of the line's mode, or the return of
/// the sound server. Main thread.
class DirectionRecordings final : public QObject {
    Q_OBJECT
public:
    struct State {
        /// Also while the microphone is being opened.
        bool isRecording = false;
        /// Seconds, of the take that runs or of the last one.
        double duration = 0.0;
        /// For the user; empty when there is nothing to tell.
        QString error;
    };

    DirectionRecordings(ProjectController &controller, const audio::AudioRecorder::Parts &parts);
    ~DirectionRecordings() override;

    [[nodiscard]] State state(const model::LineId &id) const;
    /// Whether any line's take runs.
    [[nodiscard]] bool isRecording() const;
    /// The line that is recorded, or whose microphone is being opened; there is one at most.
    [[nodiscard]] std::optional<model::LineId> recordingLine() const;
    /// The microphone is the line's from here on: a take of another line ends, and goes on that line.
    void start(const model::LineId &id);
    void stop(const model::LineId &id);

    /// No take runs or still waits for its last samples.
    [[nodiscard]] bool isFinished() const;
    /// Ends the takes that run; none begins until allow().
    void finish();
    void allow() { m_isAllowed = true; }

Q_SIGNALS:
    void changed(const orlenta::model::LineId &id);
    /// A take of the line begins, or something is wrong with it: the user has to see the line.
    void attentionWanted(const orlenta::model::LineId &id);
    /// The user has to allow the microphone in the desktop's settings.
    void microphoneSettingsWanted();
    /// A take has come to its end.
    void isFinishedChanged();

private:
    struct FinishedTake {
        QUrl url;
        /// Seconds.
        double duration = 0.0;
    };

    /// When a line's error was told.
    struct Told {
        /// The server was away, or has been since.
        bool isServersDoing = false;
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
    QHash<model::LineId, audio::AudioRecorder *> m_recorders;
    /// Lines that show an error, which goes with what it was about.
    QHash<model::LineId, Told> m_told;
    QHash<model::LineId, FinishedTake> m_takesOfGoneLines;
    bool m_isAllowed = true;
};

} // namespace orlenta::controller
