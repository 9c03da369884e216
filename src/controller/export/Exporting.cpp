#include "controller/export/Exporting.h"

#include <utility>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QSet>
#include <QtCore/QThreadPool>

#include "audio/files/Concatenation.h"
#include "base/files/AtomicFile.h"
#include "base/LogCategories.h"
#include "controller/document/Notices.h"
#include "controller/ProjectController.h"
#include "controller/script/Selection.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"

namespace orlenta::controller {
namespace {

using JoinedAudio = base::Result<std::shared_ptr<const JoinedFile>, audio::ConcatenationError>;

/// The thread that copies all exports of the process. One at a time, since two exports to one folder must not pick the
/// same name. Separate from the global pool, since other work must not wait for a slow disk.
class ExportThread final {
public:
    ExportThread() {
        m_thread.setMaxThreadCount(1);
        // Wait here, so that late failures are still logged: the log closes before the application object is destroyed.
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, &m_thread,
                         [this] { m_thread.waitForDone(); });
    }
    [[nodiscard]] static QThreadPool *get() {
        static ExportThread exports;
        return &exports.m_thread;
    }

private:
    QThreadPool m_thread;
};

JoinedAudio joinForExport(const QList<QUrl> &urls) {
    const auto joined = audio::concatenateAudio(urls, audio::ConcatenationOwner::Caller);
    if (!joined)
        return base::fail(joined.error());
    return JoinedAudio(std::make_shared<const JoinedFile>(joined->toLocalFile()));
}

/// Log on the worker: the project may be closed by the time the copy ends.
QString loggedExportFailure(const QString &failure) {
    qCWarning(base::log::project).noquote() << "[Exporting]" << failure;
    return failure;
}

/// Returns the error message; empty on success.
QString copyForExport(const QString &path, const QString &destination) {
    const auto copied = base::copyAtomically(path, destination);
    return copied ? QString()
                  : loggedExportFailure(QStringLiteral("Export failed: %1").arg(copied.error().description()));
}

QString freeExportName(const Exporting::Clip &clip, const QString &folder, const QSet<QString> &used) {
    const QString suffix = QFileInfo(clip.path).suffix();
    const QString extension = suffix.isEmpty() ? QStringLiteral("wav") : suffix;
    QString name = clip.clipName + u'.' + extension;
    const auto isTaken = [&] { return used.contains(name.toLower()) || QFileInfo::exists(folder + u'/' + name); };
    for (int number = 2; isTaken(); ++number)
        name = QStringLiteral("%1 %2.%3").arg(clip.clipName, QString::number(number), extension);
    return name;
}

/// Returns an error message with the names that couldn't be written; empty on success.
QString copyClips(const QList<Exporting::Clip> &clips, const QString &folder) {
    QSet<QString> used;
    QStringList failed;
    for (const Exporting::Clip &clip : clips) {
        const QString name = freeExportName(clip, folder, used);
        used.insert(name.toLower());
        if (!base::copyAtomically(clip.path, folder + u'/' + name))
            failed.append(name);
    }
    return failed.isEmpty()
               ? QString()
               : loggedExportFailure(QStringLiteral("Export failed for: %1").arg(failed.join(QStringLiteral(", "))));
}

} // namespace

JoinedFile::JoinedFile(QString path) : m_path(std::move(path)) {}

JoinedFile::~JoinedFile() {
    QFile::remove(m_path);
}

QList<Exporting::Clip> Exporting::linesToExport() const {
    QList<Clip> clips;
    const QList<model::LineId> selected = m_controller.selection().selectedLinesInScript();
    for (const model::LineId &id : selected) {
        const model::ProjectLine &line = *m_controller.state().findLine(id);
        const QString path = m_controller.media().audioURL(line).toLocalFile();
        if (path.isEmpty())
            return {};
        clips.append({id, path, m_controller.takes().clipName(line)});
    }
    return clips;
}

QCoro::Task<Exporting::Plan> Exporting::plan(MultiLineOutput output) {
    const QList<Clip> clips = linesToExport();
    if (clips.isEmpty())
        co_return NothingToExport{};
    if (clips.size() == 1)
        co_return SingleFile{clips.first().path, clips.first().clipName + QStringLiteral(".wav")};
    if (output == MultiLineOutput::Individual)
        co_return Folder{clips};
    QList<QUrl> urls;
    QList<model::LineId> lines;
    for (const Clip &clip : clips) {
        urls.append(QUrl::fromLocalFile(clip.path));
        lines.append(clip.lineId);
    }
    const QString name = m_controller.takes().continuousClipName(lines) + QStringLiteral(".wav");
    const QPointer<Exporting> self(this);
    begin();
    auto joining = QtConcurrent::run(&joinForExport, urls);
    const JoinedAudio joined = co_await joining;
    if (!self)
        co_return NothingToExport{};
    end();
    if (!joined) {
        const QString description = joined.error().description();
        qCWarning(base::log::concatenation, "Export concatenation failed: %s", qUtf8Printable(description));
        m_controller.setSpotError(QStringLiteral("Could not prepare export audio: %1").arg(description));
        co_return NothingToExport{};
    }
    const Plan prepared = SingleFile{joined.value()->path(), name, joined.value()};
    co_return prepared;
}

QCoro::Task<void> Exporting::exportTo(SingleFile file, QString destination) {
    // `file` stays alive in this coroutine: it may own the joined file that is being copied.
    auto copying = QtConcurrent::run(ExportThread::get(), &copyForExport, file.path, destination);
    const QFileInfo target(destination);
    co_await finish(std::move(copying), QStringLiteral("\"%1\"").arg(target.fileName()), target.absolutePath());
}

QCoro::Task<void> Exporting::exportToFolder(Folder folder, QString destination) {
    return finish(QtConcurrent::run(ExportThread::get(), &copyClips, folder.clips, destination),
                  QStringLiteral("%1 clips").arg(folder.clips.size()), destination);
}

QCoro::Task<void> Exporting::finish(QFuture<QString> copying, QString what, QString folder) {
    const QPointer<Exporting> self(this);
    begin();
    m_controller.notices().withdraw(Notice::Kind::ExportFinished);
    const QString failure = co_await copying;
    if (!self)
        co_return;
    end();
    if (!failure.isEmpty())
        m_controller.setSpotError(failure);
    else
        m_controller.notices().post(
            {Notice::Kind::ExportFinished, QStringLiteral("Exported %1 to %2").arg(what, folder), folder});
}

void Exporting::begin() {
    if (++m_running == 1)
        Q_EMIT isBusyChanged();
}

void Exporting::end() {
    if (--m_running == 0)
        Q_EMIT isBusyChanged();
}

QString Exporting::dialogTitle() {
    return QStringLiteral("Export Audio");
}

QString Exporting::folderMessage(const Folder &folder) {
    return QStringLiteral("Choose a folder for the %1 exported clips.").arg(folder.clips.size());
}

} // namespace orlenta::controller
