#pragma once

#include <optional>

#include <QtCore/QByteArray>

#include "audio/files/WavFileWriter.h"

namespace orlenta::audio {

inline constexpr int wavHeaderSize = 44;
/// Maximum number of data bytes in a WAV file: the RIFF size, which includes header and pad byte, has 32 bits.
inline constexpr qint64 largestWavData = 0xFFFFFFFFLL - (wavHeaderSize - 8) - 1;

/// The canonical 44-byte header of an integer PCM WAV file with `dataBytes` bytes of audio. Doesn't account for a pad
/// byte.
[[nodiscard]] QByteArray wavHeader(quint32 dataBytes, quint32 sampleRate, quint16 channelCount, quint16 bitDepth);

/// Where the frames of an integer PCM WAV file are.
struct WavLayout {
    WavFormat format;
    qint64 dataOffset = 0;
    /// Whole frames only.
    qint64 dataBytes = 0;

    /// Locates the frames in an open file of `fileSize` bytes. Returns nothing unless it is an integer PCM WAV file
    /// that is as long as its header declares.
    [[nodiscard]] static std::optional<WavLayout> read(int descriptor, qint64 fileSize);
};

} // namespace orlenta::audio
