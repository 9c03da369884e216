#pragma once

#include <optional>
#include <span>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "audio/files/AudioFileError.h"
#include "base/files/PendingFile.h"
#include "base/files/RegularFile.h"
#include "base/Result.h"

namespace orlenta::audio {

/// The format of an integer PCM WAV file.
struct WavFormat {
    /// Hz; the header stores whole numbers.
    quint32 sampleRate = 48000;
    quint16 channelCount = 1;
    /// 8 (unsigned, as WAV requires), 16, 24 or 32 (signed).
    quint16 bitDepth = 24;

    [[nodiscard]] quint32 bytesPerFrame() const { return channelCount * (bitDepth / 8U); }

    friend bool operator==(const WavFormat &, const WavFormat &) = default;
};

/// Writes an integer PCM WAV file with the canonical 44-byte header. Rounds samples to the nearest step, clips them at
/// full scale and replaces invalid ones (SampleCleaning.h) with silence. Until finish(), the header declares an unknown
/// length, so that the file is readable if the process is killed. Without a successful finish(), the destructor removes
/// the file; only a file written in place is kept. One thread at a time; blocking.
class WavFileWriter final {
public:
    enum class Placement {
        /// Writes to a temporary file; finish() flushes it and renames it to the target.
        RenamedWhenOnDisk,
        /// The same without flushing, for files that can be recreated.
        RenamedUnflushed,
        /// Writes directly to the target, for a recording that must survive a crash; finish() flushes it. Until then
        /// the file is locked (flock), so that other processes can tell it from one left by a crash.
        InPlace,
    };

    [[nodiscard]] static base::Result<WavFileWriter, AudioFileError>
    create(const QString &path, const WavFormat &format, Placement placement = Placement::RenamedWhenOnDisk);
    [[nodiscard]] const WavFormat &format() const { return m_format; }
    [[nodiscard]] qint64 framesWritten() const;

    /// Interleaved samples, full scale ±1. The size must be a multiple of the channel count.
    base::Result<void, AudioFileError> writeFrames(std::span<const double> samples);
    base::Result<void, AudioFileError> writeFrames(std::span<const float> samples);
    /// Whole frames, already in the file's format.
    base::Result<void, AudioFileError> writeBytes(std::span<const char> bytes);
    /// Copies `byteCount` bytes at `offset` of `source`: whole frames, already in the file's format.
    base::Result<void, AudioFileError> copyBytes(const base::RegularFile &source, qint64 offset, qint64 byteCount);
    /// Completes the header and puts the file in place. Don't write afterwards.
    base::Result<void, AudioFileError> finish();

private:
    WavFileWriter(QString path, const WavFormat &format, Placement placement);
    [[nodiscard]] base::Result<void, AudioFileError> open();
    [[nodiscard]] const base::FileDescriptor &descriptor() const;
    template <typename Sample>
    base::Result<void, AudioFileError> writeSamples(std::span<const Sample> samples);
    base::Result<void, AudioFileError> append(std::span<const char> bytes);
    base::Result<void, AudioFileError> checkRoomFor(qint64 byteCount) const;
    [[nodiscard]] bool isPadded() const { return m_dataBytes % 2 != 0; }
    base::Result<void, AudioFileError> completeHeader();
    [[nodiscard]] base::Failure<AudioFileError> failure(int code) const;

    QString m_path;
    WavFormat m_format;
    Placement m_placement;
    /// Empty if the file is written in place.
    std::optional<base::PendingFile> m_pending;
    base::FileDescriptor m_inPlace;
    qint64 m_dataBytes = 0;
    QByteArray m_encoded;
};

} // namespace orlenta::audio
