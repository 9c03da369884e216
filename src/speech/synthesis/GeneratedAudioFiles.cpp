#include "speech/synthesis/GeneratedAudioFiles.h"

#include <cmath>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QUuid>

#include "audio/files/AudioFileReader.h"
#include "audio/files/WavConversion.h"
#include "audio/files/WavHeader.h"
#include "base/files/AtomicFile.h"
#include "base/files/PrivateFolders.h"

namespace orlenta::speech {

namespace {

using Conversion = base::Result<QString, audio::AudioFileError>;

/// What came can't be turned into what was asked for where the converter itself gives up; otherwise the file is to
/// blame, in its layer's own words.
SpeechError conversionError(const audio::AudioFileError &error) {
    using Kind = audio::AudioFileError::Kind;
    if (error.kind == Kind::ConversionFailed || error.kind == Kind::OutOfMemory)
        return ElevenLabsError::invalidResponse();
    return SpeechError::file(error.description());
}

int sampleRateOf(const QString &path, int nominal) {
    const auto reader = audio::AudioFileReader::open(path);
    return reader ? static_cast<int>(std::lround(reader->sampleRate())) : nominal;
}

} // namespace

QByteArray wavFileOfPcm(const QByteArray &pcm, int sampleRate) {
    return audio::wavHeader(static_cast<quint32>(pcm.size()), static_cast<quint32>(sampleRate), 1, 16) + pcm;
}

QCoro::Task<base::Result<QString, SpeechError>> convertGeneratedAudio(QByteArray bytes, QString sourceExtension,
                                                                      QString prefix, int sampleRate, int bitDepth) {
    const QString folder = base::PrivateFolders::caches();
    QFuture<Conversion> conversion = QtConcurrent::run([bytes, sourceExtension, prefix, sampleRate, bitDepth, folder] {
        return audio::convertToWAV(bytes, sourceExtension, prefix, sampleRate, bitDepth, folder);
    });
    const Conversion converted = co_await conversion;
    if (!converted)
        co_return base::fail(conversionError(converted.error()));
    co_return *converted;
}

base::Result<GeneratedPreviewAudio, SpeechError> savePreview(const QByteArray &audio, const QString &outputFormat) {
    const bool isPcm = outputFormat.startsWith(QLatin1String("pcm_"));
    const int nominal = isPcm && outputFormat.contains(QLatin1String("48000")) ? 48000 : 44100;
    const QString name =
        QStringLiteral("/voice_preview_") + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    const QString path =
        base::PrivateFolders::caches() + name + (isPcm ? QStringLiteral(".wav") : QStringLiteral(".mp3"));
    const auto written = base::writeAtomically(path, isPcm ? wavFileOfPcm(audio, nominal) : audio);
    if (!written)
        return base::fail(SpeechError::file(written.error().description()));
    return GeneratedPreviewAudio{QUrl::fromLocalFile(path), sampleRateOf(path, nominal)};
}

} // namespace orlenta::speech
