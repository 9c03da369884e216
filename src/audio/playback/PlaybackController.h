#pragma once

#include <chrono>
#include <optional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "audio/playback/PlaybackLine.h"
#include "audio/playback/RoutedAudioPlayer.h"

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::audio {

class AudioDeviceMonitor;
class OutputRoutingDiagnostics;

/// What a stop does with the playhead.
enum class PlayheadReset { KeepPlace, Reset };

/// Decides what one project window plays: a line's take, its direction audio, or a row of lines. Looks up the chosen
/// output before each playback. Stops when somebody begins to record. Main thread.
class PlaybackController final : public QObject {
    Q_OBJECT
public:
    enum class AudioSource { Generated, SourceRecording, Preview };

    static constexpr std::chrono::milliseconds progressInterval{30};

    PlaybackController(SoundServer &server, base::UserDefaults &defaults, AudioDeviceMonitor &monitor,
                       OutputRoutingDiagnostics &diagnostics, QObject *parent = nullptr);

    /// The line of the playhead; it can stay set while nothing plays.
    [[nodiscard]] const std::optional<PlaybackLineId> &currentlyPlayingLineID() const { return m_lineID; }
    [[nodiscard]] std::optional<AudioSource> currentAudioSource() const { return m_source; }
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }
    [[nodiscard]] bool isPlayingSequence() const { return m_isPlaying && m_sequence; }
    /// Share of the file that has been heard, 0 to 1.
    [[nodiscard]] double playbackProgress() const { return m_progress; }
    [[nodiscard]] bool isCurrentGenerated(const PlaybackLineId &line) const;
    [[nodiscard]] bool isCurrentSource(const PlaybackLineId &line) const;
    [[nodiscard]] bool isPlayingSource(const PlaybackLineId &line) const;

    void playLine(const PlaybackLine &line);
    void playSource(const PlaybackLine &line);
    /// Plays those of the lines whose file exists, one after the other. With none, what plays goes on.
    void playAll(const QList<PlaybackLine> &lines);
    /// Plays the line's take from `fraction` of it on, 0 to 1, whatever played before.
    void seek(const PlaybackLine &line, double fraction);
    /// The same for the line's direction audio.
    void seekSource(const PlaybackLine &line, double fraction);
    void stop(PlayheadReset reset);

Q_SIGNALS:
    void currentlyPlayingLineIDChanged();
    void currentAudioSourceChanged();
    void isPlayingChanged();
    void isPlayingSequenceChanged();
    void playbackProgressChanged();
    /// Playback could not go on, for the reason given; everything has stopped. Shown under "Playback Failed".
    void playbackFailed(const QString &description);

private:
    /// A Play All under way.
    struct Sequence {
        QList<PlaybackLine> lines;
        qsizetype index = 0;
    };

    void logRequest(const QString &operation, const PlaybackLine &line) const;
    void seek(const PlaybackLine &line, AudioSource source, double fraction);
    void startPlayback(const PlaybackLine &line, AudioSource source, double fraction);
    /// Both say whether it went well; a failure has been told by then. `context` is for the diagnostics.
    bool route();
    bool play(const QString &context);
    RoutedAudioPlayer::Outcome applyPersistedOutputDevice();
    void updateProgress();
    void complete();
    void failToRoute(const RoutedAudioPlayerError &error, const QString &context);
    void fail(const RoutedAudioPlayerError &error);
    void setLine(const std::optional<PlaybackLineId> &line, std::optional<AudioSource> source);
    void setPlaying(bool isPlaying, std::optional<Sequence> sequence);
    void setProgress(double progress);

    base::UserDefaults &m_defaults;
    AudioDeviceMonitor &m_monitor;
    OutputRoutingDiagnostics &m_diagnostics;
    RoutedAudioPlayer m_player;
    QTimer m_progressTimer;
    std::optional<PlaybackLineId> m_lineID;
    std::optional<AudioSource> m_source;
    bool m_isPlaying = false;
    double m_progress = 0.0;
    std::optional<Sequence> m_sequence;
};

} // namespace orlenta::audio
