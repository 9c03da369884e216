#pragma once

#include <optional>

#include <QtCore/QByteArray>

#include "audio/files/WavFileWriter.h"

namespace orlenta::audio {

inline constexpr int wavHeaderSize = 44;
/// The most data bytes a WAV file holds: the RIFF size, header and pad byte included, is a 32-bit number.
inline constexpr qint64 largestWavData = 0xFFFFFFFFLL - (wavHeaderSize - 8) - 1;

/// The canonical header of an integer PCM WAV file with `dataBytes` bytes of audio: 44 bytes, little-endian. Neither
/// pads nor checks the data.
[[nodiscard]] QByteArray wavHeader(quint32 dataBytes, quint32 sampleRate, quint16 channelCount, quint16 bitDepth);

/// Where the frames of a plain integer PCM WAV file lie.
struct WavLayout {
    WavFormat format;
    qint64 dataOffset = 0;
    /// Whole frames only.
    qint64 dataBytes = 0;

    /// Finds the frames in an open file of `fileSize` bytes; nothing when the file is anything but a plain integer PCM
    /// WAV file that is as long as it says.
    [[nodiscard]] static std::optional<WavLayout> read(int descriptor, qint64 fileSize);
};

} // namespace orlenta::audio
