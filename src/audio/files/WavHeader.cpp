#include "audio/files/WavHeader.h"

#include <array>
#include <unistd.h>

#include <QtCore/QtEndian>

namespace orlenta::audio {
namespace {

constexpr quint16 integerPcm = 1;
constexpr qint64 riffHeaderSize = 12;
constexpr qint64 chunkHeaderSize = 8;
constexpr quint32 formatChunkSize = 16;
// Editors write a handful of chunks before the data. Give up after this many.
constexpr int mostChunks = 64;

template <typename Number>
void appendNumber(QByteArray &bytes, Number value) {
    std::array<char, sizeof(Number)> encoded{};
    qToLittleEndian(value, encoded.data());
    bytes.append(encoded.data(), static_cast<qsizetype>(encoded.size()));
}

QByteArray bytesAt(int descriptor, qint64 offset, qint64 count) {
    QByteArray bytes(static_cast<qsizetype>(count), Qt::Uninitialized);
    const ssize_t got = ::pread(descriptor, bytes.data(), static_cast<size_t>(count), offset);
    return got == count ? bytes : QByteArray();
}

std::optional<WavFormat> plainFormat(const QByteArray &chunk) {
    if (chunk.size() < static_cast<qsizetype>(formatChunkSize))
        return std::nullopt;
    const char *at = chunk.constData();
    const WavFormat format{qFromLittleEndian<quint32>(at + 4), qFromLittleEndian<quint16>(at + 2),
                           qFromLittleEndian<quint16>(at + 14)};
    const quint16 blockAlign = qFromLittleEndian<quint16>(at + 12);
    const bool isWholeBytes = format.bitDepth % 8 == 0 && format.bitDepth >= 8 && format.bitDepth <= 32;
    if (qFromLittleEndian<quint16>(at) != integerPcm || !isWholeBytes || format.channelCount == 0 ||
        blockAlign != format.bytesPerFrame())
        return std::nullopt;
    return format;
}

} // namespace

QByteArray wavHeader(quint32 dataBytes, quint32 sampleRate, quint16 channelCount, quint16 bitDepth) {
    Q_ASSERT(dataBytes <= largestWavData);
    const quint32 bytesPerFrame = channelCount * quint32{bitDepth} / 8;
    Q_ASSERT(bytesPerFrame <= 0xFFFF);
    QByteArray header;
    header.reserve(wavHeaderSize);
    header.append("RIFF");
    appendNumber(header, dataBytes + wavHeaderSize - 8);
    header.append("WAVE");
    header.append("fmt ");
    appendNumber(header, formatChunkSize);
    appendNumber(header, integerPcm);
    appendNumber(header, channelCount);
    appendNumber(header, sampleRate);
    appendNumber(header, sampleRate * bytesPerFrame);
    appendNumber(header, static_cast<quint16>(bytesPerFrame));
    appendNumber(header, bitDepth);
    header.append("data");
    appendNumber(header, dataBytes);
    return header;
}

std::optional<WavLayout> WavLayout::read(int descriptor, qint64 fileSize) {
    const QByteArray riff = bytesAt(descriptor, 0, riffHeaderSize);
    if (!riff.startsWith("RIFF") || !riff.endsWith("WAVE"))
        return std::nullopt;
    std::optional<WavFormat> format;
    qint64 offset = riffHeaderSize;
    for (int chunk = 0; chunk < mostChunks && offset + chunkHeaderSize <= fileSize; ++chunk) {
        const QByteArray header = bytesAt(descriptor, offset, chunkHeaderSize);
        if (header.isEmpty())
            return std::nullopt;
        const qint64 size = qFromLittleEndian<quint32>(header.constData() + 4);
        offset += chunkHeaderSize;
        if (size > fileSize - offset)
            return std::nullopt;
        if (header.startsWith("fmt ")) {
            format = plainFormat(bytesAt(descriptor, offset, std::min<qint64>(size, formatChunkSize)));
            if (!format)
                return std::nullopt;
        } else if (header.startsWith("data")) {
            if (!format)
                return std::nullopt;
            return WavLayout{*format, offset, size - size % format->bytesPerFrame()};
        }
        offset += size + size % 2;
    }
    return std::nullopt;
}

} // namespace orlenta::audio
