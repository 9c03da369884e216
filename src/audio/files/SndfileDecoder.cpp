#include "audio/files/SndfileDecoder.h"

#include <algorithm>

#include <QtCore/QFile>
#include <sndfile.h>

#include "audio/files/SampleCleaning.h"

namespace orlenta::audio {
namespace {

bool isReadContainer(int format) {
    switch (format & SF_FORMAT_TYPEMASK) {
    case SF_FORMAT_WAV:
    case SF_FORMAT_WAVEX:
    case SF_FORMAT_RF64:
    case SF_FORMAT_AIFF:
    case SF_FORMAT_CAF:
    case SF_FORMAT_FLAC:
    case SF_FORMAT_MPEG:
        return true;
    default:
        return false;
    }
}

AudioFileFormat::Container containerOf(int format) {
    switch (format & SF_FORMAT_TYPEMASK) {
    case SF_FORMAT_WAV:
    case SF_FORMAT_WAVEX:
    case SF_FORMAT_RF64:
        return AudioFileFormat::Container::Wav;
    default:
        return AudioFileFormat::Container::Other;
    }
}

// FLAC is lossless but compressed, so it has no linear bit depth here.
int linearBitDepth(int format) {
    if ((format & SF_FORMAT_TYPEMASK) == SF_FORMAT_FLAC)
        return 0;
    switch (format & SF_FORMAT_SUBMASK) {
    case SF_FORMAT_PCM_S8:
    case SF_FORMAT_PCM_U8:
        return 8;
    case SF_FORMAT_PCM_16:
        return 16;
    case SF_FORMAT_PCM_24:
        return 24;
    case SF_FORMAT_PCM_32:
    case SF_FORMAT_FLOAT:
        return 32;
    case SF_FORMAT_DOUBLE:
        return 64;
    default:
        return 0;
    }
}

bool isFloatingPointFormat(int format) {
    const int coding = format & SF_FORMAT_SUBMASK;
    return coding == SF_FORMAT_FLOAT || coding == SF_FORMAT_DOUBLE;
}

// libsndfile reports this message for files that look like MP3 but aren't. We know that the file exists.
QString openingFailure() {
    const QString words = QString::fromUtf8(sf_strerror(nullptr));
    return words.startsWith(QLatin1String("File does not exist")) ? QString() : words;
}

} // namespace

SndfileDecoder::SndfileDecoder(QString path, sf_private_tag *file) : m_path(std::move(path)), m_file(file) {}

SndfileDecoder::~SndfileDecoder() {
    sf_close(m_file);
}

base::Result<std::unique_ptr<SndfileDecoder>, AudioFileError> SndfileDecoder::open(const QString &path) {
    SF_INFO info{};
    SNDFILE *file = sf_open(QFile::encodeName(path).constData(), SFM_READ, &info);
    if (file == nullptr)
        return base::fail(AudioFileError{AudioFileError::Kind::UnsupportedFormat, path, openingFailure()});
    auto decoder = std::unique_ptr<SndfileDecoder>(new SndfileDecoder(path, file));
    if (!isReadContainer(info.format) || !isUsableFormat(info.samplerate, info.channels))
        return base::fail(AudioFileError{AudioFileError::Kind::UnsupportedFormat, path, {}});
    const int depth = linearBitDepth(info.format);
    const auto coding = depth > 0 ? AudioFileFormat::Coding::LinearPCM : AudioFileFormat::Coding::Compressed;
    decoder->m_format = {static_cast<double>(info.samplerate), info.channels, coding, depth, containerOf(info.format)};
    decoder->m_frames = info.frames;
    decoder->m_isMp3 = (info.format & SF_FORMAT_TYPEMASK) == SF_FORMAT_MPEG;
    decoder->m_isFloatingPoint = isFloatingPointFormat(info.format);
    return decoder;
}

bool SndfileDecoder::isMp3() const {
    return m_isMp3;
}

const AudioFileFormat &SndfileDecoder::format() const {
    return m_format;
}

std::optional<qint64> SndfileDecoder::frames() const {
    // A compressed file's header may declare more frames than the data contains.
    if (m_format.coding == AudioFileFormat::Coding::Compressed && !m_isMp3)
        return std::nullopt;
    return m_frames;
}

double SndfileDecoder::readShare(qint64 position) const {
    return m_frames > 0 ? std::clamp(static_cast<double>(position) / static_cast<double>(m_frames), 0.0, 1.0) : 0.0;
}

AudioDecoder::ReadResult SndfileDecoder::finished(qint64 framesRead) const {
    if (framesRead == 0 && sf_error(m_file) != SF_ERR_NO_ERROR)
        return base::fail(
            AudioFileError{AudioFileError::Kind::Damaged, m_path, QString::fromUtf8(sf_strerror(m_file))});
    return static_cast<qsizetype>(framesRead);
}

AudioDecoder::ReadResult SndfileDecoder::read(std::span<double> samples) {
    const auto wanted = static_cast<sf_count_t>(samples.size()) / m_format.channelCount;
    const sf_count_t got = sf_readf_double(m_file, samples.data(), wanted);
    if (m_isFloatingPoint)
        silenceNonSound(samples);
    return finished(got);
}

AudioDecoder::ReadResult SndfileDecoder::read(std::span<float> samples) {
    const auto wanted = static_cast<sf_count_t>(samples.size()) / m_format.channelCount;
    const sf_count_t got = sf_readf_float(m_file, samples.data(), wanted);
    if (m_isFloatingPoint)
        silenceNonSound(samples);
    return finished(got);
}

bool SndfileDecoder::seek(qint64 frame) {
    // In a variable-rate MP3, the library's seek is off by thousands of samples.
    if (m_format.coding == AudioFileFormat::Coding::Compressed)
        return false;
    return sf_seek(m_file, frame, SF_SEEK_SET) == frame;
}

} // namespace orlenta::audio
