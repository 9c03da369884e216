#pragma once

#include <optional>

#include <QtCore/QString>

namespace orlenta::audio {

/// Where the frames of an MP3 file begin, and whether its tag can be trusted.
struct Mp3Stream {
    /// Bytes to skip so that reading starts at the first frame, or after an untrustworthy tag. 0 if only ID3v2 tags
    /// precede it, which every reader handles.
    qint64 junkBytes = 0;
    /// Whether the first frame is a tag with a reliable length: the file contains the declared bytes, no more audio
    /// follows them, and their number is plausible for the declared frames.
    bool tellsLength = false;

    /// Examines the file's beginning and whatever follows the stream. Returns nothing if there are no frames in the
    /// first 64 KiB after the tags. Reads at most twice that much.
    [[nodiscard]] static std::optional<Mp3Stream> find(const QString &path);
};

} // namespace orlenta::audio
