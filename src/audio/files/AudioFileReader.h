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

/// Reads WAV, AIFF, MP3 and M4A files block by block, as interleaved floating-point frames with full scale ±1. The kind
/// of file is told from its content, never from its name. An encoder's delay and padding are left out where the file
/// tells them (LAME tag, edit list, iTunSMPB). What can't be sound (SampleCleaning.h) reads as 0. One thread at a time;
/// blocking.
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
    /// The exact number of frames that reading gives. For a compressed file that doesn't tell its length, or was cut
    /// off, the first call decodes the whole file once to count them. Where reading fails on damaged audio before its
    /// end it gives fewer than a length that the file tells.
    [[nodiscard]] qint64 frames();
    /// The same at once, or nothing when only decoding can tell.
    [[nodiscard]] std::optional<qint64> toldFrames() const;
    /// About how much of the file has been read, 0 to 1, also where its length isn't known.
    [[nodiscard]] double readShare() const;
    /// The frame that the next read begins with.
    [[nodiscard]] qint64 framePosition() const;

    /// Fills `samples`, whose size is a multiple of the channel count, and gives the frames read: fewer than asked for
    /// only before the end or before an error, 0 only at the end.
    base::Result<qsizetype, AudioFileError> readFrames(std::span<double> samples);
    base::Result<qsizetype, AudioFileError> readFrames(std::span<float> samples);
    /// Makes `frame` the next one to be read, exactly; in a compressed file by decoding up to it.
    base::Result<void, AudioFileError> seek(qint64 frame);

private:
    AudioFileReader(QString path, std::unique_ptr<QFile> file, std::unique_ptr<AudioDecoder> decoder);
    template <typename Sample>
    base::Result<qsizetype, AudioFileError> readSamples(std::span<Sample> samples);
    /// Opens the file anew, also when its name has gone.
    [[nodiscard]] base::Result<std::unique_ptr<AudioDecoder>, AudioFileError> reopen() const;
    /// Decoders know the file by the way that they opened it, which may say nothing to anybody.
    [[nodiscard]] base::Failure<AudioFileError> named(AudioFileError error) const;

    QString m_path;
    /// Held open: what was opened is what is read to the end, whatever becomes of its name.
    std::unique_ptr<QFile> m_file;
    std::unique_ptr<AudioDecoder> m_decoder;
    std::optional<qint64> m_countedFrames;
    qint64 m_position = 0;
};

} // namespace orlenta::audio
