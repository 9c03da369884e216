#pragma once

#include <memory>
#include <optional>
#include <span>

#include <QtCore/QFile>
#include <QtCore/QString>

#include "audio/files/AudioFileError.h"
#include "audio/files/AudioFileFormat.h"
#include "base/Result.h"

namespace orlenta::audio {

class AudioDecoder;

/// Reads WAV, AIFF, MP3 and M4A files block by block, as interleaved floating-point frames with full scale ±1. Detects
/// the format from the content, never from the name. Skips encoder delay and padding if the file declares them (LAME
/// tag, edit list, iTunSMPB). Invalid samples (SampleCleaning.h) read as 0. One thread at a time; blocking.
class AudioFileReader final {
public:
    [[nodiscard]] static base::Result<AudioFileReader, AudioFileError> open(const QString &path);
    AudioFileReader(AudioFileReader &&) noexcept;
    AudioFileReader &operator=(AudioFileReader &&) noexcept;
    ~AudioFileReader();

    [[nodiscard]] const AudioFileFormat &format() const;
    [[nodiscard]] double sampleRate() const;
    [[nodiscard]] int channelCount() const;
    [[nodiscard]] const QString &path() const;
    /// The exact number of frames. If a compressed file doesn't declare its length or is truncated, the first call
    /// decodes the whole file to count them. If the audio is damaged, reading can fail before this many frames.
    [[nodiscard]] qint64 frames();
    /// The number of frames without decoding, or nothing if only decoding can tell.
    [[nodiscard]] std::optional<qint64> toldFrames() const;
    /// Roughly what share of the file has been read, 0 to 1. Works even if the length is unknown.
    [[nodiscard]] double readShare() const;
    /// The next frame to be read.
    [[nodiscard]] qint64 framePosition() const;

    /// Fills `samples`, whose size is a multiple of the channel count. Returns the number of frames read: fewer than
    /// requested only before the end or an error, 0 only at the end.
    base::Result<qsizetype, AudioFileError> readFrames(std::span<double> samples);
    base::Result<qsizetype, AudioFileError> readFrames(std::span<float> samples);
    /// Seeks to exactly `frame`. In a compressed file this decodes everything before it.
    base::Result<void, AudioFileError> seek(qint64 frame);

private:
    AudioFileReader(QString path, std::unique_ptr<QFile> file, std::unique_ptr<AudioDecoder> decoder);
    template <typename Sample>
    base::Result<qsizetype, AudioFileError> readSamples(std::span<Sample> samples);
    /// Opens the file again, even if it has been deleted.
    [[nodiscard]] base::Result<std::unique_ptr<AudioDecoder>, AudioFileError> reopen() const;
    /// Decoders may report a path in /proc; this puts the real one back.
    [[nodiscard]] base::Failure<AudioFileError> named(AudioFileError error) const;

    QString m_path;
    /// Keeps the file readable to the end even if it is renamed or deleted.
    std::unique_ptr<QFile> m_file;
    std::unique_ptr<AudioDecoder> m_decoder;
    std::optional<qint64> m_countedFrames;
    qint64 m_position = 0;
};

} // namespace orlenta::audio
