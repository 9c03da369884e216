#include "audio/files/WavConversion.h"

#include <cmath>
#include <new>

#include <QtCore/QUuid>

#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"
#include "audio/files/WavFileWriter.h"

namespace orlenta::audio {
namespace {

using ConversionOutcome = base::Result<void, AudioFileError>;

constexpr double sameRateTolerance = 0.5;

std::unique_ptr<double[]> allocateSamples(qsizetype frames, int channels) {
    return std::unique_ptr<double[]>(new (std::nothrow) double[static_cast<size_t>(frames * channels)]());
}

// Gives its frames block by block; what reads them is a plain reader or a converting one.
template <typename Source>
ConversionOutcome copyAll(Source &source, qsizetype frames, int channels, WavFileWriter &output) {
    const auto buffer = allocateSamples(frames, channels);
    if (!buffer)
        return base::fail(AudioFileError{AudioFileError::Kind::OutOfMemory, {}, {}});
    const std::span samples(buffer.get(), static_cast<size_t>(frames * channels));
    while (true) {
        const auto read = source.readFrames(samples);
        if (!read)
            return base::fail(read.error());
        if (*read == 0)
            return {};
        const auto filled = static_cast<size_t>(*read * channels);
        if (const auto written = output.writeFrames(samples.first(filled)); !written)
            return written;
    }
}

ConversionOutcome copyFrames(AudioFileReader &source, WavFileWriter &output) {
    return copyAll(source, ConvertingReader::blockFrames, source.channelCount(), output);
}

ConversionOutcome resampleFrames(AudioFileReader &source, double sampleRate, WavFileWriter &output) {
    auto converted = ConvertingReader::create(source, sampleRate, source.channelCount());
    if (!converted)
        return base::fail(converted.error());
    const qsizetype capacity = ConvertingReader::outputCapacity(source.sampleRate(), sampleRate);
    return copyAll(converted.value(), capacity, source.channelCount(), output);
}

ConversionOutcome appendSilence(double sampleRate, WavFileWriter &output) {
    const auto frames = static_cast<qsizetype>(sampleRate * silentTailSeconds);
    const int channels = output.format().channelCount;
    const auto zeros = allocateSamples(frames, channels);
    // The tail is a nicety; a take isn't lost for want of it.
    if (!zeros)
        return {};
    return output.writeFrames(std::span<const double>(zeros.get(), static_cast<size_t>(frames * channels)));
}

} // namespace

base::Result<QString, AudioFileError> convertToWAV(const QString &sourcePath, const QString &prefix, double sampleRate,
                                                   int bitDepth, const QString &folder) {
    auto source = AudioFileReader::open(sourcePath);
    if (!source)
        return base::fail(source.error());
    const WavFormat format{static_cast<quint32>(std::lround(sampleRate)), static_cast<quint16>(source->channelCount()),
                           static_cast<quint16>(bitDepth)};
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    const QString outputPath = folder + u'/' + prefix + u'_' + uuid + QStringLiteral(".wav");
    auto output = WavFileWriter::create(outputPath, format);
    if (!output)
        return base::fail(output.error());
    const bool isSameRate = std::abs(source->sampleRate() - sampleRate) < sameRateTolerance;
    auto done = isSameRate ? copyFrames(source.value(), output.value())
                           : resampleFrames(source.value(), sampleRate, output.value());
    if (done)
        done = appendSilence(sampleRate, output.value());
    if (done)
        done = output.value().finish();
    if (!done)
        return base::fail(done.error());
    return outputPath;
}

} // namespace orlenta::audio
