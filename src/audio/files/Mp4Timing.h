#pragma once

#include <optional>

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

namespace orlenta::audio {

/// What the tag iTunSMPB of an M4A file tells, in frames: hexadecimal numbers, of which the second to the fourth are
/// these. Layout: https://developer.apple.com/library/archive/documentation/QuickTime/QTFF (Appendix G).
struct EncoderDelay {
    qint64 priming = 0;
    qint64 padding = 0;
    qint64 frames = 0;

    [[nodiscard]] static std::optional<EncoderDelay> parse(QByteArrayView tag);
};

/// Ticks a second of an M4A file's movie clock, in which edit lists count; nothing where the file has no movie header.
/// Layout: ISO/IEC 14496-12, box "mvhd".
[[nodiscard]] std::optional<qint64> movieTicksPerSecond(const QString &path);

/// All that an M4A file tells of how long a track's audio is, in ticks of the track's own clock.
struct TrackTiming {
    enum class EditList { Applied, Ignored };
    struct Length {
        qint64 ticks = 0;
        /// Whether a demuxer has to follow the edit list to give these ticks. One that does leaves out whole packets
        /// past the list's rounded end.
        EditList editList = EditList::Applied;

        friend bool operator==(const Length &, const Length &) = default;
    };

    qint64 ticksPerSecond = 1;
    /// The length by the edit list, which is rounded to the movie's clock, or the track's where there is no list.
    std::optional<qint64> editedTicks;
    /// The sum of all packets, the encoder's delay counted.
    std::optional<qint64> trackTicks;
    /// What the edit list leaves out in front.
    qint64 delayTicks = 0;
    std::optional<qint64> movieTicksPerSecond;
    std::optional<EncoderDelay> encoderDelay;

    /// The exact length as far as the file tells it.
    [[nodiscard]] std::optional<Length> length() const;

private:
    [[nodiscard]] bool isRoundedTo(qint64 ticks) const;
    [[nodiscard]] bool isOfThisTrack(const EncoderDelay &delay) const;
};

} // namespace orlenta::audio
