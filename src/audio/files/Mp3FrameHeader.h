#pragma once

#include <optional>
#include <utility>

#include <QtCore/QByteArrayView>

namespace orlenta::audio {

/// The four bytes that every MPEG audio frame of layer III begins with. Layout: ISO/IEC 11172-3 and 13818-3.
struct Mp3FrameHeader {
    static constexpr qsizetype size = 4;

    enum class Version { Mpeg1, Mpeg2, Mpeg25 };

    Version version = Version::Mpeg1;
    /// Frames a second of the audio, 8000 to 48000.
    int sampleRate = 0;
    bool isMono = false;
    /// Bytes from this header to the next one; 0 where the bit rate is free, which only the next header can tell.
    qsizetype frameBytes = 0;

    /// Reads the header that `bytes` begins with; nothing when there is none.
    [[nodiscard]] static std::optional<Mp3FrameHeader> parse(QByteArrayView bytes);
    /// Bytes between this header and a Xing or LAME tag, or the audio itself.
    [[nodiscard]] qsizetype sideInformationBytes() const;
    /// The fewest and the most bytes that a frame of this version and sample rate takes, at whatever bit rate.
    [[nodiscard]] std::pair<qsizetype, qsizetype> frameBytesRange() const;
};

/// The first place in `bytes` where `count` frames of one stream follow each other, or where the last of fewer ends
/// with the bytes; nothing when there is none. A header alone proves little: its pattern turns up in any data.
[[nodiscard]] std::optional<qsizetype> findMp3Frames(QByteArrayView bytes, int count);

} // namespace orlenta::audio
