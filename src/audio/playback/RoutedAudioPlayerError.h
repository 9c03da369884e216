#pragma once

#include <cstdint>

#include <QtCore/QString>

namespace orlenta::audio {

/// Why the player couldn't load or play.
struct RoutedAudioPlayerError {
    enum class Kind {
        OutputDeviceBindingFailed,
        AudioUnitSetPropertyFailed,
        NoFileLoaded,
        OutputAudioUnitUnavailable,
        NoFramesRemaining,
        /// `underlying` is the file error's description.
        FileUnreadable,
        /// There is no connection to the sound server, or it refused the stream; `underlying` is its reason, if any.
        SoundServerUnavailable,
        /// The sound server has no output.
        NoOutput,
        /// The sound server is connected but has stopped responding.
        ServerSilent,
        /// The output exists but has stalled.
        OutputStalled,
        /// The sound server ended the stream, for example because the user did so in a mixer.
        PlaybackEnded,
        /// A recording is running.
        RecordingRuns,
    };

    Kind kind = Kind::NoFileLoaded;
    std::uint32_t deviceID = 0;
    /// The sound server's error code.
    std::int32_t status = 0;
    QString underlying;

    [[nodiscard]] static RoutedAudioPlayerError fileUnreadable(const QString &description);
    [[nodiscard]] static RoutedAudioPlayerError soundServerUnavailable(const QString &reason);

    /// The chosen output doesn't exist, as opposed to refusing the stream.
    [[nodiscard]] bool isOutputGone() const;
    /// Whether this is about reaching the output, rather than about the file or a running recording.
    [[nodiscard]] bool concernsRouting() const;
    /// One sentence for the user.
    [[nodiscard]] QString description() const;

    friend bool operator==(const RoutedAudioPlayerError &, const RoutedAudioPlayerError &) = default;
};

} // namespace orlenta::audio
