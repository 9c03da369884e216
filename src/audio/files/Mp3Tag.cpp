#include "audio/files/Mp3Tag.h"

#include <QtCore/QtEndian>

#include "audio/files/Mp3FrameHeader.h"

namespace orlenta::audio {
namespace {

constexpr qsizetype id3HeaderSize = 10;
constexpr quint32 framesPresent = 1;
constexpr quint32 bytesPresent = 2;

quint8 mp3ByteAt(QByteArrayView bytes, qsizetype index) {
    return static_cast<quint8>(bytes[index]);
}

} // namespace

std::optional<Mp3Tag> Mp3Tag::parse(QByteArrayView frame) {
    const auto header = Mp3FrameHeader::parse(frame);
    if (!header)
        return std::nullopt;
    const qsizetype start = Mp3FrameHeader::size + header->sideInformationBytes();
    if (frame.size() < start + 16)
        return std::nullopt;
    const QByteArrayView tag = frame.sliced(start, 16);
    if (!tag.startsWith("Xing") && !tag.startsWith("Info"))
        return std::nullopt;
    if ((qFromBigEndian<quint32>(tag.data() + 4) & (framesPresent | bytesPresent)) != (framesPresent | bytesPresent))
        return std::nullopt;
    const Mp3Tag found{qFromBigEndian<quint32>(tag.data() + 8), qFromBigEndian<quint32>(tag.data() + 12)};
    // An encoder writing to a pipe can't seek back to fill these in.
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

} // namespace orlenta::audio
