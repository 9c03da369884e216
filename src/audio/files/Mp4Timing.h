#pragma once

#include <optional>

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

namespace orlenta::audio {

/// The iTunSMPB tag of an M4A file, in frames: the second to fourth of its hexadecimal numbers. Format:
/// https://developer.apple.com/library/archive/documentation/QuickTime/QTFF (Appendix G).
struct EncoderDelay {
    qint64 priming = 0;
    qint64 padding = 0;
    qint64 frames = 0;

    [[nodiscard]] static std::optional<EncoderDelay> parse(QByteArrayView tag);
};

/// Ticks per second of an M4A file's movie clock, the unit of edit lists. Returns nothing without a movie header.
/// Format: ISO/IEC 14496-12, box "mvhd".
[[nodiscard]] std::optional<qint64> movieTicksPerSecond(const QString &path);

/// Everything an M4A file declares about a track's length, in ticks of the track's clock.
struct TrackTiming {
    enum class EditList { Applied, Ignored };
    struct Length {
        qint64 ticks = 0;
        /// Whether the demuxer must apply the edit list to produce this length. If it does, it drops whole packets past
        /// the list's rounded end.
        EditList editList = EditList::Applied;

        friend bool operator==(const Length &, const Length &) = default;
    };

    qint64 ticksPerSecond = 1;
    /// Length according to the edit list, rounded to the movie's clock, or the track's length without a list.
    std::optional<qint64> editedTicks;
    /// Sum of all packets, including the encoder delay.
    std::optional<qint64> trackTicks;
    /// What the edit list skips at the start.
    qint64 delayTicks = 0;
    std::optional<qint64> movieTicksPerSecond;
    std::optional<EncoderDelay> encoderDelay;

    /// The exact length, as far as the file declares it.
    [[nodiscard]] std::optional<Length> length() const;

private:
    [[nodiscard]] bool isRoundedTo(qint64 ticks) const;
    [[nodiscard]] bool isOfThisTrack(const EncoderDelay &delay) const;
};

} // namespace orlenta::audio
