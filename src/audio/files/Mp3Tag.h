#pragma once

#include <optional>

#include <QtCore/QByteArrayView>

namespace orlenta::audio {

/// The Xing or LAME tag in the first frame of an MP3 file. Format: http://gabriel.mp3-tech.org/mp3infotag.html
struct Mp3Tag {
    /// Number of MPEG frames, without the tag's own.
    quint32 mpegFrames = 0;
    /// Size of the MP3 stream in bytes, including the tag's own frame.
    quint32 streamBytes = 0;

    /// Parses the tag of the MPEG frame at the start of `frame`. Returns nothing without a tag or a length.
    [[nodiscard]] static std::optional<Mp3Tag> parse(QByteArrayView frame);
    /// Size in bytes of the ID3v2 block that starts with `head` (10 bytes), or 0 if it isn't one.
    [[nodiscard]] static qint64 id3Size(QByteArrayView head);
};

} // namespace orlenta::audio
