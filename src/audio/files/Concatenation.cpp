#include "audio/files/Concatenation.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <limits>
#include <mutex>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QUuid>

#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"
#include "audio/files/FrameCopy.h"
#include "audio/files/WavFileWriter.h"
#include "audio/files/WavHeader.h"
#include "base/files/PrivateFolders.h"
#include "base/files/RegularFile.h"
#include "base/LogCategories.h"

namespace orlenta::audio {
namespace {

using JoinReason = ConcatenationError::Reason;
using JoinOutcome = base::Result<void, ConcatenationError>;
using JoinInputs = base::Result<QList<ConcatenationInputInfo>, ConcatenationError>;

constexpr qsizetype joinedBlockFrames = 32768;
constexpr double joinedRateTolerance = 0.5;
constexpr double mixedSampleRate = 48000.0;
constexpr int mixedBitDepth = 24;
constexpr int assumedBitDepth = 24;
constexpr int deepestWavBitDepth = 32;
constexpr qint64 longestConverted = std::numeric_limits<quint32>::max();

QString textOf(JoinReason reason) {
    switch (reason) {
    case JoinReason::NoFiles:
        return QStringLiteral("No audio files to concatenate");
    case JoinReason::NoBuffer:
        return QStringLiteral("Could not allocate audio buffer");
    case JoinReason::NoConvertedBuffer:
        return QStringLiteral("Could not allocate converted audio buffer");
    case JoinReason::NoConverter:
        return QStringLiteral("Could not create sample-rate converter");
    case JoinReason::TooLarge:
        return QStringLiteral("Audio file is too large to concatenate");
    case JoinReason::ConversionFailed:
        return QStringLiteral("Audio conversion failed");
    }
    return {};
}

int codeOf(JoinReason reason) {
    switch (reason) {
    case JoinReason::NoFiles:
        return 1;
    case JoinReason::NoBuffer:
    case JoinReason::NoConvertedBuffer:
        return 2;
    case JoinReason::NoConverter:
        return 3;
    case JoinReason::TooLarge:
        return 4;
    case JoinReason::ConversionFailed:
        return 5;
    }
    return 0;
}

ConcatenationError joiningError(const AudioFileError &error) {
    if (error.kind == AudioFileError::Kind::TooLarge)
        return JoinReason::TooLarge;
    if (error.kind == AudioFileError::Kind::ConversionFailed)
        return JoinReason::ConversionFailed;
    return error;
}

JoinOutcome joiningOutcome(const base::Result<void, AudioFileError> &result) {
    if (!result)
        return base::fail(joiningError(result.error()));
    return {};
}

/// Where the frames of an integer PCM WAV file are; nothing for any other file.
std::optional<WavLayout> layoutOf(const base::Result<base::RegularFile, base::FileError> &file) {
    return file ? WavLayout::read(file->descriptor.get(), file->size) : std::nullopt;
}

base::Result<ConcatenationInputInfo, ConcatenationError> inputInfo(const QString &path) {
    // For an integer PCM WAV file the header is all we need.
    if (const auto layout = layoutOf(base::openRegularFile(path))) {
        const WavFormat &plain = layout->format;
        if (isUsableFormat(plain.sampleRate, plain.channelCount))
            return ConcatenationInputInfo{static_cast<double>(plain.sampleRate), plain.channelCount, plain.bitDepth};
    }
    const auto reader = AudioFileReader::open(path);
    if (!reader)
        return base::fail(ConcatenationError(reader.error()));
    const AudioFileFormat &format = reader->format();
    const bool isLinear = format.coding == AudioFileFormat::Coding::LinearPCM && format.bitDepth > 0;
    return ConcatenationInputInfo{format.sampleRate, static_cast<quint32>(format.channelCount),
                                  isLinear ? format.bitDepth : assumedBitDepth};
}

JoinInputs scanInputs(const QList<QUrl> &urls) {
    if (urls.isEmpty())
        return base::fail(ConcatenationError(JoinReason::NoFiles));
    QList<ConcatenationInputInfo> inputs;
    inputs.reserve(urls.size());
    for (const QUrl &url : urls) {
        const auto info = inputInfo(url.toLocalFile());
        if (!info)
            return base::fail(info.error());
        inputs.append(*info);
    }
    return inputs;
}

WavFormat outputFormat(const QList<ConcatenationInputInfo> &inputs) {
    const ConcatenationInputInfo chosen = concatenationFormat(inputs);
    // An integer WAV file can't hold 64-bit samples.
    return {static_cast<quint32>(std::lround(chosen.sampleRate)), static_cast<quint16>(chosen.channelCount),
            static_cast<quint16>(std::min(chosen.bitDepth, deepestWavBitDepth))};
}

template <typename Source>
JoinOutcome appendAll(Source &source, WavFileWriter &output, JoinReason missingBuffer) {
    const auto copied = copyFrames(source, output, joinedBlockFrames);
    if (!copied && copied.error().kind == AudioFileError::Kind::OutOfMemory)
        return base::fail(ConcatenationError(missingBuffer));
    return joiningOutcome(copied);
}

JoinOutcome appendConverted(AudioFileReader &source, WavFileWriter &output) {
    const qint64 frames = source.frames();
    // The converter's frame counts have 32 bits.
    if (frames < 1 || frames > longestConverted)
        return base::fail(ConcatenationError(JoinReason::TooLarge));
    const WavFormat &format = output.format();
    auto converted = ConvertingReader::create(source, format.sampleRate, format.channelCount);
    if (!converted)
        return base::fail(ConcatenationError(JoinReason::NoConverter));
    return appendAll(converted.value(), output, JoinReason::NoConvertedBuffer);
}

JoinOutcome appendFile(const QString &path, WavFileWriter &output) {
    const auto plain = base::openRegularFile(path);
    // Frames already in the output format need no decoding, so joining them costs no more than copying.
    if (const auto layout = layoutOf(plain); layout && layout->format == output.format())
        return joiningOutcome(output.copyBytes(*plain, layout->dataOffset, layout->dataBytes));
    auto source = AudioFileReader::open(path);
    if (!source)
        return base::fail(ConcatenationError(source.error()));
    if (source.value().frames() == 0)
        return {};
    const WavFormat &format = output.format();
    if (source->sampleRate() == format.sampleRate && source->channelCount() == format.channelCount)
        return appendAll(source.value(), output, JoinReason::NoBuffer);
    return appendConverted(source.value(), output);
}

JoinOutcome writeJoined(const QList<QUrl> &urls, const WavFormat &format, const QString &path) {
    auto output = WavFileWriter::create(path, format, WavFileWriter::Placement::RenamedUnflushed);
    if (!output)
        return base::fail(joiningError(output.error()));
    for (const QUrl &url : urls) {
        if (const auto appended = appendFile(url.toLocalFile(), output.value()); !appended)
            return appended;
    }
    return joiningOutcome(output.value().finish());
}

/// The process's one output that no caller owns.
struct UnretainedOutput {
    std::mutex mutex;
    QUrl lastConcatenationOutputURL;
};

UnretainedOutput &unretainedOutput() {
    static UnretainedOutput output;
    return output;
}

base::Result<QString, ConcatenationError> reserveOutput() {
    UnretainedOutput &shared = unretainedOutput();
    const std::scoped_lock lock(shared.mutex);
    const QString folder = base::PrivateFolders::temporary() + QStringLiteral("/OrlentaStitchedAudio");
    if (!QDir().mkpath(folder))
        return base::fail(ConcatenationError(AudioFileError::fromErrno(AudioFileError::Kind::CannotWrite, {}, errno)));
    if (!shared.lastConcatenationOutputURL.isEmpty())
        QFile::remove(shared.lastConcatenationOutputURL.toLocalFile());
    shared.lastConcatenationOutputURL.clear();
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    return folder + QStringLiteral("/continuous_") + uuid + QStringLiteral(".wav");
}

} // namespace

QString ConcatenationError::domain() {
    return QStringLiteral("Orlenta");
}

int ConcatenationError::code() const {
    const JoinReason *reason = std::get_if<JoinReason>(&m_cause);
    return reason != nullptr ? codeOf(*reason) : 0;
}

ConcatenationError ConcatenationError::withoutNameOf(const QString &path) const {
    const auto *error = std::get_if<AudioFileError>(&m_cause);
    return error != nullptr && error->path == path ? ConcatenationError(error->withoutName()) : *this;
}

QString ConcatenationError::description() const {
    const JoinReason *reason = std::get_if<JoinReason>(&m_cause);
    return reason != nullptr ? textOf(*reason) : std::get<AudioFileError>(m_cause).description();
}

ConcatenationInputInfo concatenationFormat(const QList<ConcatenationInputInfo> &inputs) {
    ConcatenationInputInfo chosen = inputs.first();
    chosen.channelCount = std::max(chosen.channelCount, 1U);
    const double firstRate = chosen.sampleRate;
    const auto differs = [firstRate](const ConcatenationInputInfo &input) {
        return std::abs(input.sampleRate - firstRate) > joinedRateTolerance;
    };
    if (std::ranges::none_of(inputs, differs))
        return chosen;
    qCInfo(base::log::concatenation, "Concatenating mixed sample rates to 48 kHz");
    const auto deepest = std::ranges::max_element(inputs, {}, &ConcatenationInputInfo::bitDepth);
    return {mixedSampleRate, chosen.channelCount, std::max(deepest->bitDepth, mixedBitDepth)};
}

base::Result<void, ConcatenationError> concatenateAudio(const QList<QUrl> &urls, const QUrl &outputURL) {
    const auto inputs = scanInputs(urls);
    if (!inputs)
        return base::fail(inputs.error());
    return writeJoined(urls, outputFormat(*inputs), outputURL.toLocalFile());
}

base::Result<QUrl, ConcatenationError> concatenateAudio(const QList<QUrl> &urls, ConcatenationOwner retainedBy) {
    const auto inputs = scanInputs(urls);
    if (!inputs)
        return base::fail(inputs.error());
    const auto path = reserveOutput();
    if (!path)
        return base::fail(path.error());
    if (const auto joined = writeJoined(urls, outputFormat(*inputs), *path); !joined)
        return base::fail(joined.error().withoutNameOf(*path));
    const QUrl output = QUrl::fromLocalFile(*path);
    if (retainedBy == ConcatenationOwner::NextConcatenation) {
        UnretainedOutput &shared = unretainedOutput();
        const std::scoped_lock lock(shared.mutex);
        shared.lastConcatenationOutputURL = output;
    }
    return output;
}

} // namespace orlenta::audio
