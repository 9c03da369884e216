#include "audio/files/WavConversion.h"

#include <cmath>

#include <QtCore/QUuid>

#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"
#include "audio/files/FrameCopy.h"
#include "audio/files/WavFileWriter.h"

namespace orlenta::audio {
namespace {

using ConversionOutcome = base::Result<void, AudioFileError>;

constexpr double sameRateTolerance = 0.5;

ConversionOutcome resampleFrames(AudioFileReader &source, double sampleRate, WavFileWriter &output) {
    auto converted = ConvertingReader::create(source, sampleRate, source.channelCount());
    if (!converted)
        return base::fail(converted.error());
    return copyFrames(converted.value(), output, ConvertingReader::outputCapacity(source.sampleRate(), sampleRate));
}

ConversionOutcome appendSilence(double sampleRate, WavFileWriter &output) {
    const auto frames = static_cast<qsizetype>(sampleRate * silentTailSeconds);
    const int channels = output.format().channelCount;
    const auto zeros = allocateFrames(frames, channels);
    // The tail is optional; don't lose a take over it.
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
    auto done = isSameRate ? copyFrames(source.value(), output.value(), ConvertingReader::blockFrames)
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
