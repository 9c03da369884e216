#include "audio/files/AudioFileReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <sys/stat.h>
#include <vector>

#include <QtCore/QFile>

#include "audio/files/FfmpegDecoder.h"
#include "audio/files/Mp3Stream.h"
#include "audio/files/SndfileDecoder.h"

namespace orlenta::audio {
namespace {

using DecoderResult = base::Result<std::unique_ptr<AudioDecoder>, AudioFileError>;

constexpr qsizetype skippedBlockFrames = 4096;

// Opening a pipe could block forever, and reading a device might never end.
base::Result<void, AudioFileError> checkRegularFile(const QString &path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return base::fail(AudioFileError::fromErrno(AudioFileError::Kind::CannotOpen, path, errno));
    if (!S_ISREG(status.st_mode))
        return base::fail(AudioFileError{AudioFileError::Kind::CannotOpen, path, QStringLiteral("not a regular file")});
    return {};
}

bool isMp4(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.read(8).mid(4) == "ftyp";
}

// Without a length tag, libsndfile stops reading an MP3 at a guessed length, which may be too short.
DecoderResult openMp3(const QString &path, const Mp3Stream &stream, std::unique_ptr<SndfileDecoder> opened) {
    if (opened && stream.tellsLength && stream.junkBytes == 0)
        return std::unique_ptr<AudioDecoder>(std::move(opened));
    return FfmpegDecoder::open(path, FfmpegDecoder::Container::Mp3, stream.junkBytes);
}

DecoderResult openDecoder(const QString &path) {
    if (const auto regular = checkRegularFile(path); !regular)
        return base::fail(regular.error());
    if (isMp4(path))
        return FfmpegDecoder::open(path, FfmpegDecoder::Container::Mp4);
    auto opened = SndfileDecoder::open(path);
    if (opened && !opened.value()->isMp3())
        return std::unique_ptr<AudioDecoder>(std::move(opened).value());
    // libsndfile recognises an MP3 by its first bytes, so it fails if anything precedes them.
    const auto stream = Mp3Stream::find(path);
    if (!opened && !stream)
        return base::fail(opened.error());
    return openMp3(path, stream.value_or(Mp3Stream{}), opened ? std::move(opened).value() : nullptr);
}

} // namespace

AudioFileReader::AudioFileReader(QString path, std::unique_ptr<QFile> file, std::unique_ptr<AudioDecoder> decoder)
    : m_path(std::move(path)), m_file(std::move(file)), m_decoder(std::move(decoder)) {}
AudioFileReader::AudioFileReader(AudioFileReader &&) noexcept = default;
AudioFileReader &AudioFileReader::operator=(AudioFileReader &&) noexcept = default;
AudioFileReader::~AudioFileReader() = default;

base::Result<AudioFileReader, AudioFileError> AudioFileReader::open(const QString &path) {
    auto decoder = openDecoder(path);
    if (!decoder)
        return base::fail(decoder.error());
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadOnly))
        return base::fail(AudioFileError{AudioFileError::Kind::CannotOpen, path, file->errorString()});
    return AudioFileReader(path, std::move(file), std::move(decoder).value());
}

DecoderResult AudioFileReader::reopen() const {
    auto decoder = openDecoder(QStringLiteral("/proc/self/fd/%1").arg(m_file->handle()));
    if (!decoder)
        return named(decoder.error());
    return decoder;
}

base::Failure<AudioFileError> AudioFileReader::named(AudioFileError error) const {
    error.path = m_path;
    return base::fail(std::move(error));
}

const AudioFileFormat &AudioFileReader::format() const {
    return m_decoder->format();
}

double AudioFileReader::sampleRate() const {
    return format().sampleRate;
}

int AudioFileReader::channelCount() const {
    return format().channelCount;
}

const QString &AudioFileReader::path() const {
    return m_path;
}

qint64 AudioFileReader::frames() {
    if (const auto told = m_decoder->frames())
        return *told;
    if (m_countedFrames)
        return *m_countedFrames;
    qint64 counted = 0;
    if (auto decoder = reopen()) {
        std::vector<float> block(static_cast<size_t>(skippedBlockFrames * channelCount()));
        // Stop counting at a read error: a reader won't get further either.
        for (auto read = decoder.value()->read(block); read && *read > 0; read = decoder.value()->read(block))
            counted += *read;
    }
    m_countedFrames = counted;
    return counted;
}

std::optional<qint64> AudioFileReader::toldFrames() const {
    return m_decoder->frames();
}

double AudioFileReader::readShare() const {
    return m_decoder->readShare(m_position);
}

qint64 AudioFileReader::framePosition() const {
    return m_position;
}

template <typename Sample>
base::Result<qsizetype, AudioFileError> AudioFileReader::readSamples(std::span<Sample> samples) {
    auto read = m_decoder->read(samples);
    if (!read)
        return named(read.error());
    m_position += *read;
    return read;
}

base::Result<qsizetype, AudioFileError> AudioFileReader::readFrames(std::span<double> samples) {
    return readSamples(samples);
}

base::Result<qsizetype, AudioFileError> AudioFileReader::readFrames(std::span<float> samples) {
    return readSamples(samples);
}

base::Result<void, AudioFileError> AudioFileReader::seek(qint64 frame) {
    if (m_decoder->seek(frame)) {
        m_position = frame;
        return {};
    }
    if (frame < m_position) {
        auto decoder = reopen();
        if (!decoder)
            return base::fail(decoder.error());
        m_decoder = std::move(decoder).value();
        m_position = 0;
    }
    std::vector<float> block(static_cast<size_t>(skippedBlockFrames * channelCount()));
    while (m_position < frame) {
        const auto wanted =
            static_cast<size_t>(std::min<qint64>(frame - m_position, skippedBlockFrames) * channelCount());
        const auto read = readFrames(std::span(block).first(wanted));
        if (!read)
            return base::fail(read.error());
        if (*read == 0)
            break;
    }
    return {};
}

} // namespace orlenta::audio
