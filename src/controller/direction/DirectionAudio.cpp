#include "controller/direction/DirectionAudio.h"

#include <chrono>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QUuid>

#include "audio/files/AudioImporter.h"
#include "audio/recording/LeftoverRecordings.h"
#include "base/PrivateFolders.h"
#include "controller/document/UndoHistory.h"
#include "controller/FileCopy.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "tags/ClipNames.h"

namespace orlenta::controller {
namespace {

bool isOwnTemporaryRecording(const QString &path) {
    return QFileInfo(path).absolutePath() == QDir::cleanPath(base::PrivateFolders::caches());
}

base::Result<void, ProjectControllerError> copyRecording(const QString &from, const QString &to) {
    if (!QFileInfo::exists(from))
        return base::fail(
            ProjectControllerError(ProjectControllerError::AudioSourceMissing{QUrl::fromLocalFile(from)}));
    if (const auto copied = copyFile(from, to); !copied)
        return base::fail(ProjectControllerError(copied.error()));
    return {};
}

/// A recording that an earlier run left behind has found its line, and need not be told of again.
void removeLeftover(const QUrl &source) {
    const QString path = QFileInfo(source.toLocalFile()).absoluteFilePath();
    if (isOwnTemporaryRecording(path) &&
        audio::LeftoverRecordings::find(base::PrivateFolders::caches(), std::chrono::system_clock::now())
            .contains(path))
        QFile::remove(path);
}

} // namespace

/// One file on its way, for as long as this lives.
class DirectionAudio::UnderWay final {
public:
    explicit UnderWay(DirectionAudio *audio) : m_audio(audio) {
        if (++audio->m_underWay == 1)
            Q_EMIT audio->isBusyChanged();
    }
    ~UnderWay() {
        if (m_audio && --m_audio->m_underWay == 0)
            Q_EMIT m_audio->isBusyChanged();
    }
    UnderWay(const UnderWay &) = delete;
    UnderWay &operator=(const UnderWay &) = delete;

private:
    QPointer<DirectionAudio> m_audio;
};

DirectionAudio::DirectionAudio(const Parts &parts, QObject *parent) : QObject(parent), m_parts(parts) {}

QCoro::Task<void> DirectionAudio::installRecording(QUrl file, double durationSeconds, model::LineId id) {
    const UnderWay underWay(this);
    const model::ProjectLine *line = m_parts.document.findLine(id);
    if (line == nullptr) {
        Q_EMIT lineGone(file, durationSeconds, id);
        co_return;
    }
    const QString from = file.toLocalFile();
    const QString folder = m_parts.document.folder();
    if (folder.isEmpty()) {
        adopt(from, durationSeconds, id);
        co_return;
    }
    const auto to = newPath(QStringLiteral("%1 - direction %2")
                                .arg(tags::clipName(m_parts.document.project(), *line))
                                .arg(line->sourceRecordings.size() + 1));
    if (!to) {
        failToStore(from, to.error());
        co_return;
    }
    const QPointer<DirectionAudio> self(this);
    auto copying = QtConcurrent::run(&copyRecording, from, to.value());
    const auto copied = co_await copying;
    if (!self)
        co_return;
    if (!copied) {
        failToStore(from, copied.error());
        co_return;
    }
    // The line may have gone in the meantime, and come back by undo.
    if (m_parts.document.findLine(id) == nullptr) {
        QFile::remove(to.value());
        Q_EMIT lineGone(file, durationSeconds, id);
        co_return;
    }
    if (isOwnTemporaryRecording(from))
        QFile::remove(from);
    // The project may have got another folder in the meantime.
    if (m_parts.document.folder() != folder)
        co_await installRecording(QUrl::fromLocalFile(to.value()), durationSeconds, id);
    else
        adopt(to.value(), durationSeconds, id);
}

QCoro::Task<void> DirectionAudio::importDirectionAudio(QUrl source, model::LineId id) {
    const UnderWay underWay(this);
    const QString name = source.fileName();
    const bool isImported = co_await import(source, name, id);
    if (isImported)
        removeLeftover(source);
}

QCoro::Task<void> DirectionAudio::importDroppedFile(QUrl source, model::LineId id) {
    const UnderWay underWay(this);
    const QString name = source.fileName();
    const auto lent = audio::AudioImporter::openDroppedFile(source);
    if (!lent) {
        failToImport(name, audio::description(lent.error()));
        co_return;
    }
    const QPointer<DirectionAudio> self(this);
    auto staging = QtConcurrent::run(&audio::AudioImporter::stageDroppedFile, lent.value());
    const auto staged = co_await staging;
    const QString copy = staged ? staged->toLocalFile() : QString();
    bool isImported = false;
    if (self && staged)
        isImported = co_await import(staged.value(), name, id);
    else if (self)
        failToImport(name, audio::description(staged.error()));
    if (isImported)
        removeLeftover(source);
    if (staged)
        QFile::remove(copy);
}

QCoro::Task<bool> DirectionAudio::import(QUrl source, QString name, model::LineId id) {
    if (m_parts.document.findLine(id) == nullptr)
        co_return false;
    const QString folder = m_parts.document.folder();
    const auto to = newPath(tags::cleanedClipName(QFileInfo(name).completeBaseName()));
    if (!to) {
        failToImport(name, to.error().description());
        co_return false;
    }
    const QPointer<DirectionAudio> self(this);
    auto importing =
        QtConcurrent::run(&audio::AudioImporter::importDirectionAudio, source, QUrl::fromLocalFile(to.value()));
    const auto imported = co_await importing;
    if (!self)
        co_return false;
    if (!imported) {
        failToImport(name, audio::description(imported.error()));
        co_return false;
    }
    if (m_parts.document.findLine(id) == nullptr) {
        QFile::remove(imported->url.toLocalFile());
        co_return false;
    }
    if (m_parts.document.folder() != folder)
        co_await installRecording(imported->url, imported->durationSeconds, id);
    else
        adopt(imported->url.toLocalFile(), imported->durationSeconds, id);
    co_return true;
}

base::Result<QString, ProjectControllerError> DirectionAudio::newPath(const QString &stem) const {
    QString folder = base::PrivateFolders::caches();
    if (!m_parts.document.folder().isEmpty()) {
        const auto recordings = m_parts.media.audioFolder(AudioKind::SourceRecording);
        if (!recordings)
            return recordings;
        folder = recordings.value();
    }
    // Two files of one name may be on their way at once, so looking for a free name would not do.
    const QString suffix = QUuid::createUuid().toString(QUuid::WithoutBraces).left(8).toLower();
    return QStringLiteral("%1/%2 - %3.wav").arg(folder, stem.isEmpty() ? QStringLiteral("direction") : stem, suffix);
}

void DirectionAudio::adopt(const QString &path, double durationSeconds, const model::LineId &id) {
    Document &document = m_parts.document;
    const Document::Change change(document);
    const StoreUndoSnapshot before = m_parts.history.takeSnapshot();
    model::SourceRecording recording;
    recording.id = model::RecordingId::create();
    recording.filename = QFileInfo(path).fileName();
    recording.recordedAt = document.now();
    recording.durationSeconds = durationSeconds;
    model::ProjectLineSettings settings = document.project().effectiveSettings(*document.findLine(id));
    settings.directionMode = model::DirectionMode::Voice;
    document.updateLine(
        id,
        [&](model::ProjectLine &line) {
            line.sourceRecordings.append(recording);
            line.activeSourceId = recording.id;
            line.settings = settings;
        },
        EditKey());
    m_parts.runtime.update(
        id, [&](LineRuntimeState &state) { state.directionAudioURL = QUrl::fromLocalFile(path); }, EditKey());
    m_parts.waveforms.invalidate(id, WaveformKind::SourceRecording, EditKey());
    m_parts.history.registerUndo(before, QStringLiteral("Import Direction Audio"));
    Q_EMIT adopted(id);
}

void DirectionAudio::fail(const QString &description) {
    m_parts.document.setSpotError(QStringLiteral("Audio import failed: %1").arg(description));
}

void DirectionAudio::failToImport(const QString &name, const QString &description) {
    // By then the user may have chosen another file for another line.
    fail(name.isEmpty() ? description : QStringLiteral("%1 (%2)").arg(description, name));
}

void DirectionAudio::failToStore(const QString &recording, const ProjectControllerError &error) {
    // It can't be made again, so its owner must be able to find it.
    fail(QFileInfo::exists(recording)
             ? QStringLiteral("%1 The recording is kept in %2").arg(error.description(), recording)
             : error.description());
}

} // namespace orlenta::controller
