#include "audio/files/WavFileWriter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include "audio/files/SampleCleaning.h"
#include "audio/files/WavHeader.h"
#include "base/files/AtomicFile.h"

namespace orlenta::audio {
namespace {

constexpr quint32 unknownLength = 0xFFFFFFFF;
constexpr size_t encodedBlockSamples = 16384;
constexpr qsizetype copiedBlockBytes = 256 * 1024;

// Clamp before converting, so that overloads clip instead of wrapping around.
template <typename Sample>
qint32 quantised(Sample sample, double fullScale) {
    const double scaled = isSound(sample) ? static_cast<double>(sample) * fullScale : 0.0;
    return static_cast<qint32>(std::lrint(std::clamp(scaled, -fullScale, fullScale - 1.0)));
}

template <typename Sample>
void encodeSamples(std::span<const Sample> samples, int bitDepth, char *out) {
    const double fullScale = std::ldexp(1.0, bitDepth - 1);
    for (const Sample sample : samples) {
        const qint32 value = quantised(sample, fullScale);
        switch (bitDepth) {
        case 8:
            *out++ = static_cast<char>(value + 128);
            break;
        case 16:
            qToLittleEndian(static_cast<qint16>(value), out);
            out += 2;
            break;
        case 24:
            *out++ = static_cast<char>(value);
            *out++ = static_cast<char>(value >> 8);
            *out++ = static_cast<char>(value >> 16);
            break;
        default:
            qToLittleEndian(value, out);
            out += 4;
            break;
        }
    }
}

bool isWritableFormat(const WavFormat &format) {
    constexpr std::array<quint16, 4> depths{8, 16, 24, 32};
    return std::ranges::find(depths, format.bitDepth) != depths.end() && format.channelCount > 0 &&
           format.sampleRate > 0;
}

} // namespace

WavFileWriter::WavFileWriter(QString path, const WavFormat &format, Placement placement)
    : m_path(std::move(path)), m_format(format), m_placement(placement) {}

const base::FileDescriptor &WavFileWriter::descriptor() const {
    return m_pending ? m_pending->descriptor() : m_inPlace;
}

base::Failure<AudioFileError> WavFileWriter::failure(int code) const {
    return base::fail(AudioFileError::fromErrno(AudioFileError::Kind::CannotWrite, m_path, code));
}

base::Result<WavFileWriter, AudioFileError> WavFileWriter::create(const QString &path, const WavFormat &format,
                                                                  Placement placement) {
    WavFileWriter writer(path, format, placement);
    if (!isWritableFormat(format))
        return base::fail(AudioFileError{AudioFileError::Kind::ConversionFailed, path, {}});
    if (auto opened = writer.open(); !opened)
        return base::fail(opened.error());
    QByteArray header = wavHeader(0, format.sampleRate, format.channelCount, format.bitDepth);
    qToLittleEndian(unknownLength, header.data() + 4);
    qToLittleEndian(unknownLength, header.data() + wavHeaderSize - 4);
    if (const int code = writer.descriptor().write(header))
        return writer.failure(code);
    return writer;
}

base::Result<void, AudioFileError> WavFileWriter::open() {
    if (m_placement != Placement::InPlace) {
        auto pending = base::PendingFile::create(m_path);
        if (!pending)
            return base::fail(AudioFileError::fromFileError(AudioFileError::Kind::CannotWrite, pending.error()));
        m_pending.emplace(std::move(pending).value());
        return {};
    }
    const QByteArray path = QFile::encodeName(m_path);
    ::unlink(path.constData());
    m_inPlace =
        base::FileDescriptor(::open(path.constData(), O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_RDWR, 0644));
    if (!m_inPlace.isOpen())
        return failure(errno);
    ::flock(m_inPlace.get(), LOCK_EX | LOCK_NB);
    return {};
}

qint64 WavFileWriter::framesWritten() const {
    return m_dataBytes / m_format.bytesPerFrame();
}

base::Result<void, AudioFileError> WavFileWriter::checkRoomFor(qint64 byteCount) const {
    if (m_dataBytes + byteCount > largestWavData)
        return base::fail(AudioFileError{AudioFileError::Kind::TooLarge, m_path, {}});
    return {};
}

base::Result<void, AudioFileError> WavFileWriter::append(std::span<const char> bytes) {
    if (const int code = descriptor().write(bytes))
        return failure(code);
    m_dataBytes += static_cast<qint64>(bytes.size());
    return {};
}

template <typename Sample>
base::Result<void, AudioFileError> WavFileWriter::writeSamples(std::span<const Sample> samples) {
    const size_t bytesPerSample = m_format.bitDepth / 8U;
    m_encoded.resize(static_cast<qsizetype>(std::min(samples.size(), encodedBlockSamples) * bytesPerSample));
    while (!samples.empty()) {
        const auto block = samples.first(std::min(samples.size(), encodedBlockSamples));
        encodeSamples(block, m_format.bitDepth, m_encoded.data());
        const auto bytes = std::span<const char>(m_encoded.constData(), block.size() * bytesPerSample);
        if (const auto written = writeBytes(bytes); !written)
            return written;
        samples = samples.subspan(block.size());
    }
    return {};
}

base::Result<void, AudioFileError> WavFileWriter::writeFrames(std::span<const double> samples) {
    return writeSamples(samples);
}

base::Result<void, AudioFileError> WavFileWriter::writeFrames(std::span<const float> samples) {
    return writeSamples(samples);
}

base::Result<void, AudioFileError> WavFileWriter::writeBytes(std::span<const char> bytes) {
    if (const auto fits = checkRoomFor(static_cast<qint64>(bytes.size())); !fits)
        return fits;
    return append(bytes);
}

base::Result<void, AudioFileError> WavFileWriter::copyBytes(const base::RegularFile &source, qint64 offset,
                                                            qint64 byteCount) {
    if (const auto fits = checkRoomFor(byteCount); !fits)
        return fits;
    // Copy through memory: because of the 44-byte offset, copy_file_range measured slower.
    m_encoded.resize(copiedBlockBytes);
    while (byteCount > 0) {
        const auto wanted = static_cast<size_t>(std::min<qint64>(copiedBlockBytes, byteCount));
        const ssize_t got = ::pread(source.descriptor.get(), m_encoded.data(), wanted, offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return base::fail(
                AudioFileError{AudioFileError::Kind::Damaged, source.path, QStringLiteral("it ends early")});
        if (const auto copied = append({m_encoded.constData(), static_cast<size_t>(got)}); !copied)
            return copied;
        offset += got;
        byteCount -= got;
    }
    return {};
}

base::Result<void, AudioFileError> WavFileWriter::completeHeader() {
    const auto dataBytes = static_cast<quint32>(m_dataBytes);
    QByteArray header = wavHeader(dataBytes, m_format.sampleRate, m_format.channelCount, m_format.bitDepth);
    // RIFF chunks start at even offsets. The pad byte counts towards the file's size but not the data's.
    if (isPadded()) {
        qToLittleEndian(dataBytes + wavHeaderSize - 8 + 1, header.data() + 4);
        if (const int code = descriptor().write({"", 1}))
            return failure(code);
    }
    const auto size = static_cast<size_t>(header.size());
    const ssize_t written = ::pwrite(descriptor().get(), header.constData(), size, 0);
    return written == header.size() ? base::Result<void, AudioFileError>() : failure(written < 0 ? errno : EIO);
}

base::Result<void, AudioFileError> WavFileWriter::finish() {
    if (const auto completed = completeHeader(); !completed)
        return completed;
    if (m_pending) {
        const auto flush = m_placement == Placement::RenamedUnflushed ? base::Flush::Never : base::Flush::ToDisk;
        const qint64 size = wavHeaderSize + m_dataBytes + (isPadded() ? 1 : 0);
        if (const auto placed = m_pending->commit(size, flush); !placed)
            return base::fail(AudioFileError::fromFileError(AudioFileError::Kind::CannotWrite, placed.error()));
        return {};
    }
    if (const int code = m_inPlace.flush())
        return failure(code);
    if (const int code = m_inPlace.close())
        return failure(code);
    if (const auto synced = base::syncToDisk(m_path); !synced)
        return base::fail(AudioFileError::fromFileError(AudioFileError::Kind::CannotWrite, synced.error()));
    return {};
}

} // namespace orlenta::audio
