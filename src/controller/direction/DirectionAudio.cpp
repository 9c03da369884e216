#include "controller/direction/DirectionAudio.h"

#include <chrono>
#include <type_traits>
#include <utility>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QFutureWatcher>
#include <QtCore/QPointer>
#include <QtCore/QPromise>
#include <QtCore/QUuid>

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

constexpr int progressSteps = 1000;
/// The share of a dropped file's import that copying it aside takes.
constexpr double stagedShare = 0.3;

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

/// One import that the user can follow and cancel, for as long as this lives.
class DirectionAudio::Import final {
public:
    explicit Import(DirectionAudio *audio) : m_underWay(audio), m_audio(audio) {
        audio->m_imports.append(this);
        Q_EMIT audio->importProgressChanged();
    }
    ~Import() {
        if (m_audio && m_audio->m_imports.removeOne(this))
            Q_EMIT m_audio->importProgressChanged();
    }
    Import(const Import &) = delete;
    Import &operator=(const Import &) = delete;

    [[nodiscard]] double share() const { return m_share; }
    void setShare(double share) {
        m_share = share;
        Q_EMIT m_audio->importProgressChanged();
    }
    [[nodiscard]] std::stop_source &stop() { return m_stop; }

private:
    UnderWay m_underWay;
    QPointer<DirectionAudio> m_audio;
    std::stop_source m_stop;
    double m_share = 0.0;
};

double DirectionAudio::importProgress() const {
    double sum = 0.0;
    for (const Import *import : m_imports)
        sum += import->share();
    return m_imports.isEmpty() ? 0.0 : sum / static_cast<double>(m_imports.size());
}

void DirectionAudio::cancelImports() {
    for (Import *import : std::as_const(m_imports))
        import->stop().request_stop();
}

template <typename Work>
auto DirectionAudio::startImporting(const Work &work, Import *import, double end) {
    using Outcome = std::invoke_result_t<Work, audio::ImportControl>;
    const auto run = [work, stop = import->stop().get_token()](QPromise<Outcome> &promise) {
        promise.setProgressRange(0, progressSteps);
        promise.addResult(work(
            {stop, [&promise](double share) { promise.setProgressValue(static_cast<int>(share * progressSteps)); }}));
    };
    const QFuture<Outcome> running = QtConcurrent::run(run);
    auto *watcher = new QFutureWatcher<Outcome>(this);
    connect(watcher, &QFutureWatcherBase::progressValueChanged, this,
            [this, import, begin = import->share(), end](int steps) {
                // The last step may be told after the end.
                if (m_imports.contains(import))
                    import->setShare(begin + (end - begin) * steps / progressSteps);
            });
    connect(watcher, &QFutureWatcherBase::finished, watcher, &QObject::deleteLater);
    watcher->setFuture(running);
    return running;
}

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
        if (QFileInfo::exists(from))
            Q_EMIT recordingKept(file, durationSeconds, id, failureText(stored.error().description()));
        else
            fail(stored.error().description());
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
    Import import(this);
    const QString name = source.fileName();
    const bool isImported = co_await importFile(source, name, id, &import);
    if (isImported)
        removeLeftover(source);
}

QCoro::Task<void> DirectionAudio::importDroppedFile(QUrl source, model::LineId id) {
    Import import(this);
    const QString name = source.fileName();
    const auto lent = audio::AudioImporter::openDroppedFile(source);
    if (!lent) {
        failToImport(name, lent.error());
        co_return;
    }
    const QPointer<DirectionAudio> self(this);
    auto staging = startImporting(
        [file = lent.value()](const audio::ImportControl &control) {
            return audio::AudioImporter::stageDroppedFile(file, control);
        },
        &import, stagedShare);
    const auto staged = co_await staging;
    const QString copy = staged ? staged->toLocalFile() : QString();
    bool isImported = false;
    if (self && staged)
        isImported = co_await importFile(staged.value(), name, id, &import);
    else if (self)
        failToImport(name, staged.error());
    if (isImported)
        removeLeftover(source);
    if (staged)
        QFile::remove(copy);
}

QCoro::Task<bool> DirectionAudio::importFile(QUrl source, QString name, model::LineId id, Import *import) {
    if (m_controller.state().findLine(id) == nullptr)
        co_return false;
    const QString folder = m_controller.state().folder();
    const auto to = newPath(tags::cleanedClipName(QFileInfo(name).completeBaseName()));
    if (!to) {
        failToImport(name, to.error().description());
        co_return false;
    }
    const QPointer<DirectionAudio> self(this);
    auto importing = startImporting(
        [source, destination = QUrl::fromLocalFile(to.value())](const audio::ImportControl &control) {
            return audio::AudioImporter::importDirectionAudio(source, destination, control);
        },
        import, 1.0);
    const auto imported = co_await importing;
    if (!self)
        co_return false;
    if (!imported) {
        failToImport(name, imported.error());
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

QString DirectionAudio::failureText(const QString &description) {
    return QStringLiteral("Audio import failed: %1").arg(description);
}

void DirectionAudio::fail(const QString &description) {
    m_controller.setSpotError(failureText(description));
}

void DirectionAudio::failToImport(const QString &name, audio::AudioImporterError error) {
    if (error != audio::AudioImporterError::cancelled)
        failToImport(name, audio::description(error));
}

void DirectionAudio::failToImport(const QString &name, const QString &description) {
    // Name the file: the user may have imported another one meanwhile.
    fail(name.isEmpty() ? description : QStringLiteral("%1 (%2)").arg(description, name));
}

} // namespace orlenta::controller
