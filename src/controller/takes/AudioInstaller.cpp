#include "controller/takes/AudioInstaller.h"

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>

#include "base/files/AtomicFile.h"
#include "base/files/PrivateFolders.h"
#include "controller/ProjectController.h"
#include "controller/takes/MediaFiles.h"

namespace orlenta::controller {
namespace {

QString freePath(const QString &folder, const QString &suggestedName) {
    QString name = QFileInfo(suggestedName).fileName();
    if (name.isEmpty())
        name = QStringLiteral("audio.wav");
    const QString stem = QFileInfo(name).completeBaseName();
    const QString extension = QFileInfo(name).suffix();
    QString path = folder + u'/' + name;
    for (int number = 1; QFileInfo::exists(path) || QFileInfo(path).isSymLink(); ++number)
        path = QStringLiteral("%1/%2-%3.%4").arg(folder, stem).arg(number).arg(extension);
    return path;
}

bool liesDirectlyInCaches(const QString &path) {
    return QFileInfo(path).absolutePath() == QDir::cleanPath(base::PrivateFolders::caches());
}

AudioInstaller::Outcome storeFile(const QString &path, const QString &folder, const QString &name) {
    using Error = ProjectControllerError;
    if (!QFileInfo::exists(path))
        return base::fail(Error(Error::AudioSourceMissing{QUrl::fromLocalFile(path)}));
    if (QFileInfo(path).absolutePath() == folder)
        return path;
    const QString destination = freePath(folder, name);
    const auto stored =
        liesDirectlyInCaches(path) ? base::moveAtomically(path, destination) : base::copyAtomically(path, destination);
    if (!stored)
        return base::fail(Error(stored.error()));
    return destination;
}

} // namespace

QCoro::Task<AudioInstaller::Outcome> AudioInstaller::install(QString path, QString name, AudioKind kind) {
    const QPointer<ProjectController> controller(&m_controller);
    for (;;) {
        const QString folder = controller->state().folder();
        if (folder.isEmpty())
            co_return path;
        const auto target = controller->media().audioFolder(kind);
        if (!target)
            co_return base::fail(target.error());
        begin();
        auto storing = QtConcurrent::run(&storeFile, path, target.value(), name);
        const Outcome stored = co_await storing;
        if (!controller)
            co_return stored;
        end();
        if (!stored || controller->state().folder() == folder)
            co_return stored;
        // The project was saved elsewhere meanwhile: store the file there too.
        path = stored.value();
    }
}

void AudioInstaller::begin() {
    if (++m_running == 1)
        Q_EMIT isBusyChanged();
}

void AudioInstaller::end() {
    if (--m_running == 0)
        Q_EMIT isBusyChanged();
}

} // namespace orlenta::controller
