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

/// What stopping does to the playhead.
enum class PlayheadReset { KeepPlace, Reset };

/// Controls playback in one project window: a line's take, its direction audio, or a sequence of lines. Looks up the
/// chosen output before each playback. Stops when a recording starts. Main thread.
class PlaybackController final : public QObject {
    Q_OBJECT
public:
    enum class AudioSource { Generated, SourceRecording, Preview };
    /// A running Play All, and the place of the line at the playhead in it.
    struct Sequence {
        QList<PlaybackLine> lines;
        qsizetype index = 0;
    };

    static constexpr std::chrono::milliseconds progressInterval{30};

    PlaybackController(SoundServer &server, base::UserDefaults &defaults, AudioDeviceMonitor &monitor,
                       OutputRoutingDiagnostics &diagnostics, QObject *parent = nullptr);

    /// The line at the playhead; can be set while nothing plays.
    [[nodiscard]] const std::optional<PlaybackLineId> &currentlyPlayingLineID() const { return m_lineID; }
    [[nodiscard]] std::optional<AudioSource> currentAudioSource() const { return m_source; }
    [[nodiscard]] bool isPlaying() const { return m_isPlaying; }
    [[nodiscard]] bool isPlayingSequence() const { return m_isPlaying && m_sequence; }
    /// None unless several lines play.
    [[nodiscard]] const std::optional<Sequence> &sequence() const { return m_sequence; }
    /// Share of the file that has been played, 0 to 1.
    [[nodiscard]] double playbackProgress() const { return m_progress; }
    [[nodiscard]] bool isCurrentGenerated(const PlaybackLineId &line) const;
    [[nodiscard]] bool isCurrentSource(const PlaybackLineId &line) const;
    [[nodiscard]] bool isPlayingSource(const PlaybackLineId &line) const;

    void playLine(const PlaybackLine &line);
    void playSource(const PlaybackLine &line);
    /// Plays the lines in order, skipping those without a file. If none has one, current playback continues.
    void playAll(const QList<PlaybackLine> &lines);
    /// Plays the line's take from `fraction` (0 to 1) of its length.
    void seek(const PlaybackLine &line, double fraction);
    /// Plays the line's direction audio from `fraction` (0 to 1) of its length.
    void seekSource(const PlaybackLine &line, double fraction);
    void stop(PlayheadReset reset);

Q_SIGNALS:
    void currentlyPlayingLineIDChanged();
    void currentAudioSourceChanged();
    void isPlayingChanged();
    void isPlayingSequenceChanged();
    void playbackProgressChanged();
    /// Playback failed and has stopped. The window shows the description under "Playback Failed".
    void playbackFailed(const QString &description);

private:
    void logRequest(const QString &operation, const PlaybackLine &line) const;
    void seek(const PlaybackLine &line, AudioSource source, double fraction);
    void startPlayback(const PlaybackLine &line, AudioSource source, double fraction);
    /// Return whether they succeeded; they have already reported a failure. `context` is for the diagnostics.
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
