#pragma once

#include <optional>
#include <utility>

#include <QtCore/QByteArrayView>

namespace orlenta::audio {

/// The four-byte header of an MPEG layer III frame. Format: ISO/IEC 11172-3 and 13818-3.
struct Mp3FrameHeader {
    static constexpr qsizetype size = 4;

    enum class Version { Mpeg1, Mpeg2, Mpeg25 };

    Version version = Version::Mpeg1;
    /// Hz, 8000 to 48000.
    int sampleRate = 0;
    bool isMono = false;
    /// Bytes from this header to the next; 0 for the "free" bit rate, where only finding the next header can tell.
    qsizetype frameBytes = 0;

    /// Parses the header at the start of `bytes`, if there is one.
    [[nodiscard]] static std::optional<Mp3FrameHeader> parse(QByteArrayView bytes);
    /// Bytes between this header and a Xing or LAME tag or the audio data.
    [[nodiscard]] qsizetype sideInformationBytes() const;
    /// Minimum and maximum size in bytes of a frame with this version and sample rate, over all bit rates.
    [[nodiscard]] std::pair<qsizetype, qsizetype> frameBytesRange() const;
};

/// Finds the first position in `bytes` where `count` frames of one stream follow each other, or fewer if the last one
/// ends exactly at the end. A single header proves little: its bit pattern occurs in any data.
[[nodiscard]] std::optional<qsizetype> findMp3Frames(QByteArrayView bytes, int count);

} // namespace orlenta::audio
