#pragma once

#include <cstdint>

#include <QtCore/QString>

namespace orlenta::audio {

/// Why the player could not load or play.
struct RoutedAudioPlayerError {
    enum class Kind {
        OutputDeviceBindingFailed,
        AudioUnitSetPropertyFailed,
        NoFileLoaded,
        OutputAudioUnitUnavailable,
        NoFramesRemaining,
        /// `underlying` is the file error's own sentence.
        FileUnreadable,
        /// The sound server doesn't answer, or refuses a stream; `underlying` is its reason, or empty.
        SoundServerUnavailable,
        /// The sound server has no output.
        NoOutput,
        /// The sound server answers nothing any more, though it is there.
        ServerSilent,
        /// The output takes no more sound, though it is there.
        OutputStandsStill,
        /// The sound server, or somebody through it, ended the playback.
        PlaybackEnded,
        /// Somebody records, and the microphone would hear it.
        RecordingRuns,
    };

    Kind kind = Kind::NoFileLoaded;
    std::uint32_t deviceID = 0;
    /// The sound server's error number.
    std::int32_t status = 0;
    QString underlying;

    [[nodiscard]] static RoutedAudioPlayerError fileUnreadable(const QString &description);
    [[nodiscard]] static RoutedAudioPlayerError soundServerUnavailable(const QString &reason);

    /// The chosen output isn't there, rather than unwilling.
    [[nodiscard]] bool isOutputGone() const;
    /// Whether it says anything about the way to the output, rather than about what was to be played or when.
    [[nodiscard]] bool concernsRouting() const;
    /// One sentence for the user.
    [[nodiscard]] QString description() const;

    friend bool operator==(const RoutedAudioPlayerError &, const RoutedAudioPlayerError &) = default;
};

} // namespace orlenta::audio
