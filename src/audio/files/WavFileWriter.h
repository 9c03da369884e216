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
    /// Frames a second, as the header keeps it: whole.
    quint32 sampleRate = 48000;
    quint16 channelCount = 1;
    /// 8 (unsigned, as WAV has it), 16, 24 or 32 (signed).
    quint16 bitDepth = 24;

    [[nodiscard]] quint32 bytesPerFrame() const { return channelCount * (bitDepth / 8U); }

    friend bool operator==(const WavFormat &, const WavFormat &) = default;
};

/// Writes an integer PCM WAV file with the canonical 44-byte header. Samples are rounded to the nearest step and
/// limited to full scale; what can't be sound (SampleCleaning.h) is silence. Until finish() the header says "as long as
/// the file is", so that a file whose writer was killed can still be read. A writer that is destroyed before finish()
/// has succeeded leaves no file, unless it writes in place: a recording is kept as far as it got. One thread at a time;
/// blocking.
class WavFileWriter final {
public:
    enum class Placement {
        /// A temporary name beside the target; finish() flushes to disk, then renames over the target.
        RenamedWhenOnDisk,
        /// The same without the flush: for a file that can be made again at any time.
        RenamedUnflushed,
        /// The target's own name from the first byte on, for a recording that must survive a crash; flushed at the end.
        /// The file is locked until then (flock), so that other processes can tell it from what a crash left.
        InPlace,
    };

    [[nodiscard]] static base::Result<WavFileWriter, AudioFileError>
    create(const QString &path, const WavFormat &format, Placement placement = Placement::RenamedWhenOnDisk);
    [[nodiscard]] const WavFormat &format() const { return m_format; }
    [[nodiscard]] qint64 framesWritten() const;

    /// Interleaved samples, full scale ±1; the size is a multiple of the channel count.
    base::Result<void, AudioFileError> writeFrames(std::span<const double> samples);
    base::Result<void, AudioFileError> writeFrames(std::span<const float> samples);
    /// Whole frames that are in the file's format already.
    base::Result<void, AudioFileError> writeBytes(std::span<const char> bytes);
    /// Copies whole frames that are in the file's format already: the `byteCount` bytes at `offset` of `source`.
    base::Result<void, AudioFileError> copyBytes(const base::RegularFile &source, qint64 offset, qint64 byteCount);
    /// Completes the header and puts the file in its place. Nothing may be written afterwards.
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
    /// The file, unless it is written in place.
    std::optional<base::PendingFile> m_pending;
    base::FileDescriptor m_inPlace;
    qint64 m_dataBytes = 0;
    QByteArray m_encoded;
};

} // namespace orlenta::audio
