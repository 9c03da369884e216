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
#include "base/files/AtomicFile.h"
#include "base/files/PrivateFolders.h"
#include "controller/document/Edit.h"
#include "controller/ProjectController.h"
#include "controller/takes/AudioInstaller.h"
#include "controller/takes/LineWaveforms.h"
#include "controller/takes/MediaFiles.h"
#include "tags/ClipNames.h"

namespace orlenta::controller {
namespace {

bool isOwnTemporaryRecording(const QString &path) {
    return QFileInfo(path).absolutePath() == QDir::cleanPath(base::PrivateFolders::caches());
}

// A random suffix: two files with the same name may be stored at the same time, so checking for a free name isn't
// enough.
QString recordingFileName(const QString &stem) {
    const QString suffix = QUuid::createUuid().toString(QUuid::WithoutBraces).left(8).toLower();
    return QStringLiteral("%1 - %2.wav").arg(stem.isEmpty() ? QStringLiteral("direction") : stem, suffix);
}

/// Deletes a recording left over by an earlier run, once it is imported.
void removeLeftover(const QUrl &source) {
    const QString path = QFileInfo(source.toLocalFile()).absoluteFilePath();
    if (isOwnTemporaryRecording(path) &&
        audio::LeftoverRecordings::find(base::PrivateFolders::caches(), std::chrono::system_clock::now())
            .contains(path))
        QFile::remove(path);
}

} // namespace

/// Marks one file as being stored, for its lifetime.
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

QCoro::Task<void> DirectionAudio::installRecording(QUrl file, double durationSeconds, model::LineId id) {
    const UnderWay underWay(this);
    const model::ProjectLine *line = m_controller.state().findLine(id);
    if (line == nullptr) {
        Q_EMIT lineGone(file, durationSeconds, id);
        co_return;
    }
    const QString from = file.toLocalFile();
    const QString name = recordingFileName(QStringLiteral("%1 - direction %2")
                                               .arg(tags::clipName(m_controller.project(), *line))
                                               .arg(line->sourceRecordings.size() + 1));
    const QPointer<DirectionAudio> self(this);
    const auto stored = co_await m_controller.audioInstaller().install(from, name, AudioKind::SourceRecording);
    if (!self)
        co_return;
    if (!stored) {
        failToStore(from, stored.error());
        co_return;
    }
    if (m_controller.state().findLine(id) != nullptr) {
        adopt(stored.value(), durationSeconds, id);
        co_return;
    }
    // The line is gone, but undo may bring it back: keep the recording, in the project's folder if it can't be moved
    // out of there.
    const QString kept = stored.value();
    auto movingBack = QtConcurrent::run([kept, from] { return base::moveAtomically(kept, from).hasValue(); });
    const bool isBack = co_await movingBack;
    if (self)
        Q_EMIT lineGone(isBack ? file : QUrl::fromLocalFile(kept), durationSeconds, id);
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
    auto staging = QtConcurrent::run(&audio::AudioImporter::stageDroppedFile, lent.value(), audio::ImportControl{});
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
    if (m_controller.state().findLine(id) == nullptr)
        co_return false;
    const QString folder = m_controller.state().folder();
    const auto to = newPath(tags::cleanedClipName(QFileInfo(name).completeBaseName()));
    if (!to) {
        failToImport(name, to.error().description());
        co_return false;
    }
    const QPointer<DirectionAudio> self(this);
    auto importing = QtConcurrent::run(&audio::AudioImporter::importDirectionAudio, source,
                                       QUrl::fromLocalFile(to.value()), audio::ImportControl{});
    const auto imported = co_await importing;
    if (!self)
        co_return false;
    if (!imported) {
        failToImport(name, audio::description(imported.error()));
        co_return false;
    }
    if (m_controller.state().findLine(id) == nullptr) {
        QFile::remove(imported->url.toLocalFile());
        co_return false;
    }
    if (m_controller.state().folder() != folder)
        co_await installRecording(imported->url, imported->durationSeconds, id);
    else
        adopt(imported->url.toLocalFile(), imported->durationSeconds, id);
    co_return true;
}

base::Result<QString, ProjectControllerError> DirectionAudio::newPath(const QString &stem) const {
    QString folder = base::PrivateFolders::caches();
    if (!m_controller.state().folder().isEmpty()) {
        const auto recordings = m_controller.media().audioFolder(AudioKind::SourceRecording);
        if (!recordings)
            return recordings;
        folder = recordings.value();
    }
    return folder + u'/' + recordingFileName(stem);
}

void DirectionAudio::adopt(const QString &path, double durationSeconds, const model::LineId &id) {
    {
        const Edit edit(m_controller, QStringLiteral("Import Direction Audio"));
        model::SourceRecording recording;
        recording.id = model::RecordingId::create();
        recording.filename = QFileInfo(path).fileName();
        recording.recordedAt = m_controller.now();
        recording.durationSeconds = durationSeconds;
        model::ProjectLineSettings settings = edit->project.effectiveSettings(*edit->findLine(id));
        settings.directionMode = model::DirectionMode::Voice;
        edit.updateLine(id, [&](model::ProjectLine &line) {
            line.sourceRecordings.append(recording);
            line.activeSourceId = recording.id;
            line.settings = settings;
        });
        edit.updateRuntime(id,
                           [&path](LineRuntimeState &state) { state.directionAudioURL = QUrl::fromLocalFile(path); });
        m_controller.waveforms().invalidate(edit, id, AudioKind::SourceRecording);
    }
    Q_EMIT adopted(id);
}

void DirectionAudio::fail(const QString &description) {
    m_controller.setSpotError(QStringLiteral("Audio import failed: %1").arg(description));
}

void DirectionAudio::failToImport(const QString &name, const QString &description) {
    // Name the file: the user may have imported another one meanwhile.
    fail(name.isEmpty() ? description : QStringLiteral("%1 (%2)").arg(description, name));
}

void DirectionAudio::failToStore(const QString &recording, const ProjectControllerError &error) {
    // A recording can't be made again, so tell the user where it is.
    fail(QFileInfo::exists(recording)
             ? QStringLiteral("%1 The recording is kept in %2").arg(error.description(), recording)
             : error.description());
}

} // namespace orlenta::controller
