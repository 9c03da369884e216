#include "audio/files/Mp3FrameHeader.h"

#include <array>

namespace orlenta::audio {
namespace {

constexpr std::array<int, 15> mpeg1BitRates{0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr std::array<int, 15> mpeg2BitRates{0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
// Highest "free" bit rate that encoders offer.
constexpr int highestFreeBitRate = 640;
constexpr std::array<int, 3> mpeg1Rates{44100, 48000, 32000};

quint8 headerByteAt(QByteArrayView bytes, qsizetype index) {
    return static_cast<quint8>(bytes[index]);
}

qsizetype unpaddedBytes(const Mp3FrameHeader &header, int kilobitsASecond) {
    return (header.version == Mp3FrameHeader::Version::Mpeg1 ? 144 : 72) * 1000 * kilobitsASecond / header.sampleRate;
}

bool isOfOneStream(const Mp3FrameHeader &first, const Mp3FrameHeader &second) {
    return first.version == second.version && first.sampleRate == second.sampleRate;
}

bool areFramesAt(QByteArrayView bytes, qsizetype at, int count) {
    const auto first = Mp3FrameHeader::parse(bytes.sliced(at));
    if (!first)
        return false;
    auto current = first;
    for (int found = 1; found < count; ++found) {
        if (current->frameBytes == 0 || current->frameBytes > bytes.size() - at)
            return false;
        at += current->frameBytes;
        if (at == bytes.size())
            return true;
        current = Mp3FrameHeader::parse(bytes.sliced(at));
        if (!current || !isOfOneStream(*first, *current))
            return false;
    }
    return true;
}

} // namespace

std::optional<Mp3FrameHeader> Mp3FrameHeader::parse(QByteArrayView bytes) {
    if (bytes.size() < size || headerByteAt(bytes, 0) != 0xFF || (headerByteAt(bytes, 1) & 0xE0) != 0xE0)
        return std::nullopt;
    const int versionBits = (headerByteAt(bytes, 1) >> 3) & 3;
    const bool isLayer3 = (headerByteAt(bytes, 1) & 0x06) == 0x02;
    const auto bitRateIndex = static_cast<size_t>(headerByteAt(bytes, 2) >> 4);
    const auto rateIndex = static_cast<size_t>((headerByteAt(bytes, 2) >> 2) & 3);
    if (versionBits == 1 || !isLayer3 || bitRateIndex == 15 || rateIndex == 3)
        return std::nullopt;
    Mp3FrameHeader header;
    header.version = versionBits == 3 ? Version::Mpeg1 : versionBits == 2 ? Version::Mpeg2 : Version::Mpeg25;
    const bool isMpeg1 = header.version == Version::Mpeg1;
    header.sampleRate = mpeg1Rates[rateIndex] / (isMpeg1 ? 1 : header.version == Version::Mpeg2 ? 2 : 4);
    header.isMono = (headerByteAt(bytes, 3) & 0xC0) == 0xC0;
    const int bitRate = (isMpeg1 ? mpeg1BitRates : mpeg2BitRates)[bitRateIndex];
    if (bitRate > 0)
        header.frameBytes = unpaddedBytes(header, bitRate) + ((headerByteAt(bytes, 2) >> 1) & 1);
    return header;
}

qsizetype Mp3FrameHeader::sideInformationBytes() const {
    if (version == Version::Mpeg1)
        return isMono ? 17 : 32;
    return isMono ? 9 : 17;
}

std::pair<qsizetype, qsizetype> Mp3FrameHeader::frameBytesRange() const {
    const auto &bitRates = version == Version::Mpeg1 ? mpeg1BitRates : mpeg2BitRates;
    const int highest = frameBytes == 0 ? highestFreeBitRate : bitRates.back();
    return {unpaddedBytes(*this, bitRates[1]), unpaddedBytes(*this, highest) + 1};
}

std::optional<qsizetype> findMp3Frames(QByteArrayView bytes, int count) {
    for (qsizetype at = 0; at + Mp3FrameHeader::size <= bytes.size(); ++at) {
        if (areFramesAt(bytes, at, count))
            return at;
    }
    return std::nullopt;
}

} // namespace orlenta::audio
