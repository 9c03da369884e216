#pragma once

#include <optional>

#include <QtCore/QByteArrayView>

namespace orlenta::audio {

/// What the Xing or LAME tag in the first frame of an MP3 file tells. Layout:
/// http://gabriel.mp3-tech.org/mp3infotag.html
struct Mp3Tag {
    /// MPEG frames, the tag's own frame not counted.
    quint32 mpegFrames = 0;
    /// Bytes of the MP3 stream, the tag's own frame counted.
    quint32 streamBytes = 0;

    /// Reads the tag of the MPEG frame that `frame` begins with; nothing when there is none or it tells no length.
    [[nodiscard]] static std::optional<Mp3Tag> parse(QByteArrayView frame);
    /// The size in bytes of the ID3v2 block that `head` (its first 10 bytes) opens, 0 when it opens none.
    [[nodiscard]] static qint64 id3Size(QByteArrayView head);
};

} // namespace orlenta::audio
