#include "audio/files/WavFileWriter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include "audio/files/WavHeader.h"
#include "base/files/AtomicFile.h"

namespace orlenta::audio {
namespace {

constexpr quint32 unknownLength = 0xFFFFFFFF;
constexpr size_t encodedBlockSamples = 16384;
constexpr qsizetype copiedBlockBytes = 256 * 1024;

// Clamping comes first: a value past full scale must not wrap round to the other end.
template <typename Sample>
qint32 quantised(Sample sample, double fullScale) {
    const double scaled = static_cast<double>(sample) * fullScale;
    if (!(scaled > -fullScale))
        return std::isnan(scaled) ? 0 : static_cast<qint32>(-fullScale);
    return static_cast<qint32>(std::lrint(std::min(scaled, fullScale - 1.0)));
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

bool writeFully(int descriptor, const char *bytes, size_t count) {
    while (count > 0) {
        const ssize_t written = ::write(descriptor, bytes, count);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        bytes += written;
        count -= static_cast<size_t>(written);
    }
    return true;
}

bool isWritableFormat(const WavFormat &format) {
    constexpr std::array<quint16, 4> depths{8, 16, 24, 32};
    return std::ranges::find(depths, format.bitDepth) != depths.end() && format.channelCount > 0 &&
           format.sampleRate > 0;
}

} // namespace

WavFileWriter::WavFileWriter(QString path, const WavFormat &format, Placement placement)
    : m_path(std::move(path)), m_format(format), m_placement(placement) {}

WavFileWriter::WavFileWriter(WavFileWriter &&other) noexcept
    : m_path(std::move(other.m_path)), m_writtenPath(std::exchange(other.m_writtenPath, {})), m_format(other.m_format),
      m_placement(other.m_placement), m_descriptor(std::exchange(other.m_descriptor, -1)),
      m_dataBytes(other.m_dataBytes), m_encoded(std::move(other.m_encoded)) {}

WavFileWriter::~WavFileWriter() {
    discard();
}

void WavFileWriter::discard() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
    m_descriptor = -1;
    if (!m_writtenPath.isEmpty())
        ::unlink(m_writtenPath.constData());
    m_writtenPath.clear();
}

AudioFileError WavFileWriter::systemError() const {
    return AudioFileError::fromErrno(AudioFileError::Kind::CannotWrite, m_path, errno);
}

base::Result<WavFileWriter, AudioFileError> WavFileWriter::create(const QString &path, const WavFormat &format,
                                                                  Placement placement) {
    WavFileWriter writer(path, format, placement);
    if (!isWritableFormat(format))
        return base::fail(AudioFileError{AudioFileError::Kind::ConversionFailed, path, {}});
    const bool isInPlace = placement == Placement::InPlace;
    const QByteArray written = QFile::encodeName(isInPlace ? path : path + QStringLiteral(".tmp"));
    ::unlink(written.constData());
    constexpr mode_t mode = 0644;
    writer.m_descriptor = ::open(written.constData(), O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC | O_RDWR, mode);
    if (writer.m_descriptor < 0)
        return base::fail(writer.systemError());
    if (isInPlace)
        ::flock(writer.m_descriptor, LOCK_EX | LOCK_NB);
    else
        writer.m_writtenPath = written;
    QByteArray header = wavHeader(0, format.sampleRate, format.channelCount, format.bitDepth);
    qToLittleEndian(unknownLength, header.data() + 4);
    qToLittleEndian(unknownLength, header.data() + wavHeaderSize - 4);
    if (!writeFully(writer.m_descriptor, header.constData(), static_cast<size_t>(header.size())))
        return base::fail(writer.systemError());
    return writer;
}

qint64 WavFileWriter::framesWritten() const {
    return m_dataBytes / m_format.bytesPerFrame();
}

base::Result<void, AudioFileError> WavFileWriter::reserve(qint64 byteCount) {
    if (m_dataBytes + byteCount > largestWavData)
        return base::fail(AudioFileError{AudioFileError::Kind::TooLarge, m_path, {}});
    m_dataBytes += byteCount;
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
    if (const auto reserved = reserve(static_cast<qint64>(bytes.size())); !reserved)
        return reserved;
    if (!writeFully(m_descriptor, bytes.data(), bytes.size()))
        return base::fail(systemError());
    return {};
}

base::Result<void, AudioFileError> WavFileWriter::copyBytes(int descriptor, qint64 offset, qint64 byteCount) {
    if (const auto reserved = reserve(byteCount); !reserved)
        return reserved;
    // Through memory: with frames that begin 44 bytes into a file, the kernel's own copy was measured to be slower.
    m_encoded.resize(copiedBlockBytes);
    while (byteCount > 0) {
        const auto wanted = static_cast<size_t>(std::min<qint64>(copiedBlockBytes, byteCount));
        const ssize_t got = ::pread(descriptor, m_encoded.data(), wanted, offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return base::fail(
                AudioFileError{AudioFileError::Kind::Damaged, m_path, QStringLiteral("a source ends early")});
        if (!writeFully(m_descriptor, m_encoded.constData(), static_cast<size_t>(got)))
            return base::fail(systemError());
        offset += got;
        byteCount -= got;
    }
    return {};
}

base::Result<void, AudioFileError> WavFileWriter::completeHeader() {
    const auto dataBytes = static_cast<quint32>(m_dataBytes);
    const bool isPadded = dataBytes % 2 != 0;
    QByteArray header = wavHeader(dataBytes, m_format.sampleRate, m_format.channelCount, m_format.bitDepth);
    // RIFF chunks begin at even places; the pad byte belongs to the file but not to the data.
    if (isPadded)
        qToLittleEndian(dataBytes + wavHeaderSize - 8 + 1, header.data() + 4);
    if (isPadded && !writeFully(m_descriptor, "", 1))
        return base::fail(systemError());
    const ssize_t written = ::pwrite(m_descriptor, header.constData(), static_cast<size_t>(header.size()), 0);
    if (written != header.size())
        return base::fail(systemError());
    return {};
}

base::Result<void, AudioFileError> WavFileWriter::finish() {
    if (const auto completed = completeHeader(); !completed)
        return completed;
    if (m_placement != Placement::RenamedUnflushed && ::fsync(m_descriptor) != 0)
        return base::fail(systemError());
    if (::close(std::exchange(m_descriptor, -1)) != 0)
        return base::fail(systemError());
    if (m_placement != Placement::InPlace) {
        const QByteArray target = QFile::encodeName(m_path);
        if (::rename(m_writtenPath.constData(), target.constData()) != 0)
            return base::fail(systemError());
        m_writtenPath = target;
    }
    if (m_placement != Placement::RenamedUnflushed) {
        if (const auto synced = base::syncToDisk(m_path); !synced)
            return base::fail(AudioFileError{AudioFileError::Kind::CannotWrite, m_path, synced.error().reason});
    }
    m_writtenPath.clear();
    return {};
}

} // namespace orlenta::audio
