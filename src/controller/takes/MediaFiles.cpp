#include "controller/takes/MediaFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include "controller/document/Edit.h"
#include "controller/ProjectController.h"
#include "controller/takes/LineRuntime.h"
#include "model/FileNameGuard.h"

namespace orlenta::controller {
namespace {

bool liesBelow(const QString &path, const QString &folder) {
    return !folder.isEmpty() && path.startsWith(folder + u'/');
}

bool isPlainName(const QString &name) {
    return !name.isEmpty() && model::guardedFileName(name) == name;
}

} // namespace

/// One kind's folder, checked once for any number of file names.
class MediaFiles::Resolver final {
public:
    Resolver(const QString &projectFolder, AudioKind kind) {
        if (projectFolder.isEmpty())
            return;
        m_folder = QDir::cleanPath(projectFolder + u'/' + audioKindPath(kind));
        m_root = QFileInfo(projectFolder).canonicalFilePath();
        const QString canonical = QFileInfo(m_folder).canonicalFilePath();
        // A missing folder is safe; an existing one must not lead out of the project.
        if (!canonical.isEmpty() && !liesBelow(canonical, m_root))
            m_folder.clear();
    }

    [[nodiscard]] const QString &folder() const { return m_folder; }

    [[nodiscard]] QUrl url(const QString &name) const {
        if (m_folder.isEmpty() || !isPlainName(name))
            return {};
        const QString path = QDir::cleanPath(m_folder + u'/' + name);
        if (!liesBelow(path, m_folder))
            return {};
        const QFileInfo file(path);
        if (file.isSymLink() && !liesBelow(file.canonicalFilePath(), m_root))
            return {};
        return QUrl::fromLocalFile(path);
    }

    [[nodiscard]] QUrl existing(const QString &name) const {
        const QUrl found = url(name);
        return QFileInfo::exists(found.toLocalFile()) ? found : QUrl();
    }

private:
    QString m_folder;
    QString m_root;
};

QUrl MediaFiles::takeURL(const model::Take &take) const {
    return Resolver(m_controller.state().folder(), AudioKind::Generated).url(take.filename);
}

QUrl MediaFiles::recordingURL(const model::SourceRecording &recording) const {
    return Resolver(m_controller.state().folder(), AudioKind::SourceRecording).url(recording.filename);
}

QUrl MediaFiles::audioURL(const model::ProjectLine &line) const {
    const QUrl inUse = m_controller.runtime().state(line.lineId).generatedAudioURL;
    const model::Take *take = line.activeTake();
    if (!inUse.isEmpty() || take == nullptr)
        return inUse;
    return Resolver(m_controller.state().folder(), AudioKind::Generated).existing(take->filename);
}

QUrl MediaFiles::existingTakeURL(const model::Take &take) const {
    return Resolver(m_controller.state().folder(), AudioKind::Generated).existing(take.filename);
}

base::Result<QString, ProjectControllerError> MediaFiles::audioFolder(AudioKind kind) const {
    using Error = ProjectControllerError;
    if (m_controller.state().folder().isEmpty())
        return base::fail(Error(Error::ProjectNotBacked()));
    QString path = QDir::cleanPath(m_controller.state().folder());
    const QStringList components = audioKindPath(kind).split(u'/');
    for (const QString &component : components) {
        path += u'/' + component;
        if (QFileInfo(path).isSymLink())
            return base::fail(Error(Error::MediaFolderLinked{QUrl::fromLocalFile(path)}));
    }
    if (!QDir().mkpath(path))
        return base::fail(Error(Error::AudioFolderUnavailable{kind}));
    return path;
}

void MediaFiles::rebuildRuntimeAudio(const Edit &edit) const {
    const Resolver generated(edit->folder(), AudioKind::Generated);
    const Resolver recordings(edit->folder(), AudioKind::SourceRecording);
    edit->project.lines.forEach([&](const model::ProjectLine &line) {
        const LineRuntimeState before = edit->lineRuntime.value(line.lineId);
        LineRuntimeState after = before;
        const model::Take *take = line.activeTake();
        const model::SourceRecording *recording = line.activeRecording();
        after.generatedAudioURL = take != nullptr ? generated.existing(take->filename) : QUrl();
        after.directionAudioURL = recording != nullptr ? recordings.existing(recording->filename) : QUrl();
        if (after.generatedAudioURL != before.generatedAudioURL)
            after.waveformSamples.clear();
        if (after.directionAudioURL != before.directionAudioURL)
            after.directionWaveformSamples.clear();
        if (after != before)
            edit->lineRuntime.insert(line.lineId, after);
    });
}

void MediaFiles::rebaseRuntimeAudio(const Edit &edit) const {
    const Resolver generated(edit->folder(), AudioKind::Generated);
    const Resolver recordings(edit->folder(), AudioKind::SourceRecording);
    const auto isElsewhere = [](const QUrl &url, const Resolver &place) {
        return !url.isEmpty() && !liesBelow(url.toLocalFile(), place.folder());
    };
    const LineRuntimeMap before = edit->lineRuntime;
    before.forEach([&](const model::LineId &id, const LineRuntimeState &state) {
        LineRuntimeState moved = state;
        const model::ProjectLine *line = edit->findLine(id);
        const model::Take *take = line != nullptr ? line->activeTake() : nullptr;
        const model::SourceRecording *recording = line != nullptr ? line->activeRecording() : nullptr;
        if (isElsewhere(state.generatedAudioURL, generated))
            moved.generatedAudioURL = take != nullptr ? generated.existing(take->filename) : QUrl();
        if (isElsewhere(state.directionAudioURL, recordings))
            moved.directionAudioURL = recording != nullptr ? recordings.existing(recording->filename) : QUrl();
        if (moved != state)
            edit->lineRuntime.insert(id, moved);
    });
}

} // namespace orlenta::controller
