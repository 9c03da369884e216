#include "audio/files/Mp3Tag.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

namespace orlenta::audio {
namespace {

constexpr qsizetype frameHeaderSize = 4;
constexpr qsizetype id3HeaderSize = 10;
// Header, the largest side information, tag name, flags, frames and bytes.
constexpr qsizetype tagReach = frameHeaderSize + 32 + 4 + 4 + 4 + 4;
constexpr quint32 framesPresent = 1;
constexpr quint32 bytesPresent = 2;

quint8 mp3ByteAt(QByteArrayView bytes, qsizetype index) {
    return static_cast<quint8>(bytes[index]);
}

// The tag stands after the side information, whose size hangs on MPEG version and channel mode.
qsizetype sideInformationSize(QByteArrayView frame) {
    const bool isMpeg1 = (mp3ByteAt(frame, 1) & 0x18) == 0x18;
    const bool isMono = (mp3ByteAt(frame, 3) & 0xC0) == 0xC0;
    if (isMpeg1)
        return isMono ? 17 : 32;
    return isMono ? 9 : 17;
}

bool isLayer3Frame(QByteArrayView frame) {
    const quint8 second = mp3ByteAt(frame, 1);
    const bool isSynchronised = mp3ByteAt(frame, 0) == 0xFF && (second & 0xE0) == 0xE0;
    const bool isKnownVersion = (second & 0x18) != 0x08;
    return isSynchronised && isKnownVersion && (second & 0x06) == 0x02;
}

} // namespace

std::optional<Mp3Tag> Mp3Tag::parse(QByteArrayView frame) {
    if (frame.size() < frameHeaderSize || !isLayer3Frame(frame))
        return std::nullopt;
    const qsizetype start = frameHeaderSize + sideInformationSize(frame);
    if (frame.size() < start + 16)
        return std::nullopt;
    const QByteArrayView tag = frame.sliced(start, 16);
    if (!tag.startsWith("Xing") && !tag.startsWith("Info"))
        return std::nullopt;
    if ((qFromBigEndian<quint32>(tag.data() + 4) & (framesPresent | bytesPresent)) != (framesPresent | bytesPresent))
        return std::nullopt;
    const Mp3Tag found{qFromBigEndian<quint32>(tag.data() + 8), qFromBigEndian<quint32>(tag.data() + 12)};
    // An encoder that wrote into a pipe could not come back to fill them in.
    if (found.mpegFrames == 0 || found.streamBytes == 0)
        return std::nullopt;
    return found;
}

qint64 Mp3Tag::id3Size(QByteArrayView head) {
    if (head.size() < id3HeaderSize || !head.startsWith("ID3"))
        return 0;
    qint64 size = 0;
    for (qsizetype i = 6; i < id3HeaderSize; ++i)
        size = (size << 7) | (mp3ByteAt(head, i) & 0x7F);
    const bool hasFooter = (mp3ByteAt(head, 5) & 0x10) != 0;
    return size + id3HeaderSize * (hasFooter ? 2 : 1);
}

bool Mp3Tag::tellsLength(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const qint64 start = id3Size(file.peek(id3HeaderSize));
    if (!file.seek(start))
        return false;
    const auto tag = parse(file.read(tagReach));
    // A stream that was cut off holds less than its tag says; its length then has to be counted.
    return tag && start + tag->streamBytes <= file.size();
}

} // namespace orlenta::audio
