#include "audio/files/Mp3Stream.h"

#include <algorithm>

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include "audio/files/Mp3FrameHeader.h"
#include "audio/files/Mp3Tag.h"

namespace orlenta::audio {
namespace {

// Frame header, largest side information, tag name, flags, frame count, byte count.
constexpr qint64 tagReach = Mp3FrameHeader::size + 32 + 4 + 4 + 4 + 4;
constexpr qint64 junkReach = 64 * 1024;
constexpr qint64 tagHeadBytes = 32;
constexpr int mostTags = 16;
constexpr int framesThatProveAStream = 3;
// A file appended to another can be as short as a tag and one frame.
constexpr int framesThatProveMoreAudio = 2;

QByteArray mp3BytesAt(QFile &file, qint64 at, qint64 count) {
    return file.seek(at) ? file.read(count) : QByteArray();
}

// http://wiki.hydrogenaud.io/index.php?title=APE_Tags_Header: the size includes items and footer but not the header.
qint64 apeBytes(QByteArrayView head) {
    constexpr quint32 isHeader = 1U << 29;
    if (head.size() < tagHeadBytes || !head.startsWith("APETAGEX") ||
        (qFromLittleEndian<quint32>(head.data() + 20) & isHeader) == 0)
        return 0;
    return tagHeadBytes + qFromLittleEndian<quint32>(head.data() + 12);
}

qint64 id3v1Bytes(QByteArrayView head) {
    if (head.startsWith("TAG+"))
        return 227;
    return head.startsWith("TAG") ? 128 : 0;
}

enum class Tags { Id3v2Only, AllKinds };

qint64 afterTags(QFile &file, qint64 at, Tags tags) {
    for (int found = 0; found < mostTags; ++found) {
        const QByteArray head = mp3BytesAt(file, at, tagHeadBytes);
        qint64 bytes = Mp3Tag::id3Size(head);
        if (bytes == 0 && tags == Tags::AllKinds)
            bytes = apeBytes(head) + id3v1Bytes(head);
        if (bytes == 0)
            break;
        at += bytes;
    }
    return at;
}

// Treats tags without a header (Lyrics3, APEv1) and the output of broken writers as junk.
bool isEndOfAudio(QFile &file, qint64 at) {
    const qint64 start = afterTags(file, at, Tags::AllKinds);
    const qint64 rest = std::max<qint64>(0, file.size() - start);
    return rest <= junkReach && !findMp3Frames(mp3BytesAt(file, start, rest), framesThatProveMoreAudio);
}

// A corrupt number would truncate the audio, or claim hours of it.
bool fitsItsBytes(const Mp3Tag &tag, const Mp3FrameHeader &header) {
    const auto [least, most] = header.frameBytesRange();
    const qint64 frames = qint64{tag.mpegFrames} + 1;
    return frames * least <= tag.streamBytes && tag.streamBytes <= frames * most;
}

} // namespace

std::optional<Mp3Stream> Mp3Stream::find(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return std::nullopt;
    const qint64 plainStart = afterTags(file, 0, Tags::Id3v2Only);
    qint64 start = plainStart;
    QByteArray first = mp3BytesAt(file, start, tagReach);
    auto tag = Mp3Tag::parse(first);
    if (!tag) {
        start = afterTags(file, plainStart, Tags::AllKinds);
        const QByteArray front = mp3BytesAt(file, start, junkReach);
        const auto found = findMp3Frames(front, framesThatProveAStream);
        if (!found)
            return std::nullopt;
        start += *found;
        first = front.mid(*found, tagReach);
        tag = Mp3Tag::parse(first);
    }
    const auto header = Mp3FrameHeader::parse(first);
    if (tag && header && !fitsItsBytes(*tag, *header)) {
        // Skip the tag: a reader that sees it would cut off what it takes for padding.
        start += header->frameBytes;
        tag.reset();
    }
    Mp3Stream stream;
    stream.junkBytes = start == plainStart ? 0 : start;
    // A truncated stream is shorter than its tag says, so its frames have to be counted.
    const qint64 end = tag ? start + tag->streamBytes : 0;
    stream.tellsLength = tag && end <= file.size() && isEndOfAudio(file, end);
    return stream;
}

} // namespace orlenta::audio
