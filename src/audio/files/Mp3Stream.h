#pragma once

#include <optional>

#include <QtCore/QString>

namespace orlenta::audio {

/// Where the frames of an MP3 file begin and whether its tag can be believed.
struct Mp3Stream {
    /// Bytes to leave out so that reading begins with the first frame, or with the one after a tag that can't be
    /// believed; 0 where nothing but ID3v2 tags, which every reader knows, stands before it.
    qint64 junkBytes = 0;
    /// Whether the first frame is a tag that tells the length of all the audio in the file: the bytes it promises are
    /// there, what follows them is no more audio, and they are neither too few nor too many for its frames.
    bool tellsLength = false;

    /// Looks at the file's beginning and at what follows the stream; nothing where no frames are found within the
    /// first 64 KiB after the tags. Reads no more than that twice, however long the file is.
    [[nodiscard]] static std::optional<Mp3Stream> find(const QString &path);
};

} // namespace orlenta::audio
