#include "audio/files/AudioImporter.h"

#include <cerrno>
#include <climits>
#include <cmath>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"
#include "audio/files/FrameCopy.h"
#include "audio/files/WavFileWriter.h"
#include "base/files/AtomicFile.h"
#include "base/files/ContentCopy.h"
#include "base/files/PendingFile.h"
#include "base/files/PrivateFolders.h"

namespace orlenta::audio {
namespace {

using ImportOutcome = base::Result<void, AudioFileError>;

constexpr WavFormat standardDirectionFormat{48000, 1, 24};
constexpr double standardRateTolerance = 0.5;
constexpr qsizetype importedBlockFrames = 16384;

QString lowerExtension(const QUrl &url) {
    return QFileInfo(url.toLocalFile()).suffix().toLower();
}

bool isSupportedExtension(const QString &extension) {
    static const QStringList supported{QStringLiteral("wav"), QStringLiteral("wave"), QStringLiteral("mp3"),
                                       QStringLiteral("m4a"), QStringLiteral("aiff"), QStringLiteral("aif")};
    return supported.contains(extension);
}

// Next to the destination, so that the final step is a rename within one file system.
QString importingPath(const QString &destination) {
    const QFileInfo info(destination);
    const QString extension = info.suffix().isEmpty() ? QStringLiteral("wav") : info.suffix();
    const QString unique = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper().left(8);
    const QString ending = QStringLiteral(".importing-") + unique + u'.' + extension;
    QString stem = info.completeBaseName();
    while (QFile::encodeName(stem + ending).size() > NAME_MAX)
        stem.chop(1);
    return info.absolutePath() + u'/' + stem + ending;
}

ImportOutcome importOutcome(const base::Result<void, base::FileError> &result) {
    if (!result)
        return base::fail(AudioFileError::fromFileError(AudioFileError::Kind::CannotWrite, result.error()));
    return {};
}

base::CopyControl copyControl(const ImportControl &control) {
    if (!control.progress)
        return {control.stop, {}};
    return {control.stop, [progress = control.progress](qint64 done, qint64 total) {
                progress(static_cast<double>(done) / static_cast<double>(total));
            }};
}

base::Result<void, base::FileError> copyAside(const base::RegularFile &lent, const QString &path,
                                              const ImportControl &control) {
    auto copy = base::PendingFile::create(path);
    if (!copy)
        return base::fail(copy.error());
    if (auto copied = base::copyContent(lent, copy.value(), copyControl(control)); !copied)
        return copied;
    return copy.value().commit(lent.size, base::Flush::Never);
}

/// Logs the failure, unless the caller cancelled the import.
AudioImporterError importerError(const AudioFileError &error, const ImportControl &control) {
    if (control.stop.stop_requested())
        return AudioImporterError::cancelled;
    AudioDebugLogger::log(QStringLiteral("AudioImporter ERROR: ") + error.description());
    return AudioImporterError::importFailed;
}

base::Result<double, AudioFileError> importThrough(const QString &temporary, const QUrl &source,
                                                   const QString &destination, const ImportControl &control) {
    if (!QDir().mkpath(QFileInfo(destination).absolutePath()))
        return base::fail(AudioFileError::fromErrno(AudioFileError::Kind::CannotWrite, destination, errno));
    QFile::remove(temporary);
    const QUrl temporaryURL = QUrl::fromLocalFile(temporary);
    const ImportOutcome stored =
        AudioImporter::canCopyWithoutConversion(source)
            ? importOutcome(base::copyAtomically(source.toLocalFile(), temporary, copyControl(control)))
            : AudioImporter::convertToStandardDirectionWAV(source, temporaryURL, control);
    if (!stored)
        return base::fail(stored.error());
    auto duration = AudioImporter::durationSeconds(temporaryURL);
    if (!duration)
        return duration;
    if (*duration <= 0.0)
        return base::fail(AudioFileError{AudioFileError::Kind::UnsupportedFormat, source.toLocalFile(),
                                         QStringLiteral("it contains no audio")});
    if (const auto moved = importOutcome(base::moveAtomically(temporary, destination)); !moved)
        return base::fail(moved.error());
    return duration;
}

} // namespace

QString description(AudioImporterError error) {
    switch (error) {
    case AudioImporterError::unsupportedFormat:
        return QStringLiteral("Couldn't import this file. Only WAV, MP3, M4A, and AIFF are supported.");
    case AudioImporterError::importFailed:
        return QStringLiteral("Couldn't import this file.");
    case AudioImporterError::cancelled:
        return QStringLiteral("The import was cancelled.");
    }
    return {};
}

QStringList AudioImporter::panelExtensions() {
    return {QStringLiteral("wav"), QStringLiteral("mp3"), QStringLiteral("m4a"), QStringLiteral("aiff"),
            QStringLiteral("aif")};
}

base::Result<ImportedDirectionAudio, AudioImporterError>
AudioImporter::importDirectionAudio(const QUrl &source, const QUrl &destination, const ImportControl &control) {
    if (!isSupportedExtension(lowerExtension(source)))
        return base::fail(AudioImporterError::unsupportedFormat);
    const QString target = destination.toLocalFile();
    const QString temporary = importingPath(target);
    const auto duration = importThrough(temporary, source, target, control);
    if (!duration) {
        QFile::remove(temporary);
        return base::fail(importerError(duration.error(), control));
    }
    return ImportedDirectionAudio{destination, *duration};
}

bool AudioImporter::canCopyWithoutConversion(const QUrl &url) {
    const QString extension = lowerExtension(url);
    if (extension != QLatin1String("wav") && extension != QLatin1String("wave"))
        return false;
    AudioDebugLogger::log(QStringLiteral("AVAudioFile.init(forReading:) from AudioImporter.canCopyWithoutConversion"));
    const auto reader = AudioFileReader::open(url.toLocalFile());
    if (!reader)
        return false;
    const AudioFileFormat &format = reader->format();
    // The copy is named .wav, and other programs rely on that, so the content must really be WAV.
    return format.container == AudioFileFormat::Container::Wav && format.coding == AudioFileFormat::Coding::LinearPCM &&
           format.bitDepth == standardDirectionFormat.bitDepth &&
           format.channelCount == standardDirectionFormat.channelCount &&
           std::abs(format.sampleRate - standardDirectionFormat.sampleRate) < standardRateTolerance;
}

base::Result<void, AudioFileError> AudioImporter::convertToStandardDirectionWAV(const QUrl &source,
                                                                                const QUrl &destination,
                                                                                const ImportControl &control) {
    auto input = AudioFileReader::open(source.toLocalFile());
    if (!input)
        return base::fail(input.error());
    auto output = WavFileWriter::create(destination.toLocalFile(), standardDirectionFormat);
    if (!output)
        return base::fail(output.error());
    auto converted = ConvertingReader::create(input.value(), standardDirectionFormat.sampleRate,
                                              standardDirectionFormat.channelCount);
    if (!converted)
        return base::fail(converted.error());
    const auto tellProgress = [&] {
        if (control.progress)
            control.progress(input->readShare());
        return !control.stop.stop_requested();
    };
    if (auto copied = copyFrames(converted.value(), output.value(), importedBlockFrames, tellProgress); !copied)
        return copied;
    if (control.stop.stop_requested())
        return base::fail(
            AudioFileError{AudioFileError::Kind::ConversionFailed, source.toLocalFile(), QStringLiteral("cancelled")});
    return output.value().finish();
}

base::Result<double, AudioFileError> AudioImporter::durationSeconds(const QUrl &url) {
    auto reader = AudioFileReader::open(url.toLocalFile());
    if (!reader)
        return base::fail(reader.error());
    return static_cast<double>(reader.value().frames()) / reader->sampleRate();
}

base::Result<std::shared_ptr<const base::RegularFile>, AudioImporterError>
AudioImporter::openDroppedFile(const QUrl &url) {
    if (!isSupportedExtension(lowerExtension(url)))
        return base::fail(AudioImporterError::unsupportedFormat);
    auto lent = base::openRegularFile(url.toLocalFile());
    if (!lent)
        return base::fail(
            importerError(AudioFileError::fromFileError(AudioFileError::Kind::CannotOpen, lent.error()), {}));
    return std::shared_ptr<const base::RegularFile>(std::make_shared<base::RegularFile>(std::move(lent).value()));
}

base::Result<QUrl, AudioImporterError>
AudioImporter::stageDroppedFile(const std::shared_ptr<const base::RegularFile> &lent, const ImportControl &control) {
    const QString uuid = QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    const QString staged = base::PrivateFolders::temporary() + QStringLiteral("/OrlentaDroppedAudio-") + uuid + u'.' +
                           QFileInfo(lent->path).suffix();
    if (const auto copied = importOutcome(copyAside(*lent, staged, control)); !copied)
        return base::fail(importerError(copied.error(), control));
    return QUrl::fromLocalFile(staged);
}

} // namespace orlenta::audio
