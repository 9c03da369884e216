#include "controller/Exporting.h"

#include <utility>

#include <qcoro/qcorofuture.h>
#include <QtConcurrent/QtConcurrentRun>
#include <QtCore/QFileInfo>
#include <QtCore/QPointer>
#include <QtCore/QSet>

#include "audio/files/Concatenation.h"
#include "base/LogCategories.h"
#include "controller/Document.h"
#include "controller/FileCopy.h"
#include "controller/MediaFiles.h"
#include "controller/Selection.h"
#include "controller/TakeEditing.h"

namespace orlenta::controller {
namespace {

QString freeExportName(const Exporting::Clip &clip, const QString &folder, const QSet<QString> &used) {
    const QString suffix = QFileInfo(clip.path).suffix();
    const QString extension = suffix.isEmpty() ? QStringLiteral("wav") : suffix;
    QString name = clip.clipName + u'.' + extension;
    const auto isTaken = [&] { return used.contains(name.toLower()) || QFileInfo::exists(folder + u'/' + name); };
    for (int number = 2; isTaken(); ++number)
        name = QStringLiteral("%1 %2.%3").arg(clip.clipName, QString::number(number), extension);
    return name;
}

} // namespace

Exporting::Exporting(const Parts &parts, QObject *parent) : QObject(parent), m_parts(parts) {}

QList<Exporting::Clip> Exporting::linesToExport() const {
    QList<Clip> clips;
    const QList<model::LineId> selected = m_parts.selection.selectedLinesInScript();
    for (const model::LineId &id : selected) {
        const model::ProjectLine &line = *m_parts.document.findLine(id);
        const QString path = m_parts.media.audioURL(line).toLocalFile();
        if (path.isEmpty())
            return {};
        clips.append({id, path, m_parts.takes.clipName(line)});
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
    const QString name = m_parts.takes.continuousClipName(lines) + QStringLiteral(".wav");
    const QPointer<Exporting> self(this);
    auto joining = QtConcurrent::run(
        [urls] { return audio::concatenateAudio(urls, audio::ConcatenationOwner::NextConcatenation); });
    const auto joined = co_await joining;
    if (!self)
        co_return NothingToExport{};
    if (!joined) {
        const QString description = joined.error().description();
        qCWarning(base::log::concatenation, "Export concatenation failed: %s", qUtf8Printable(description));
        m_parts.document.setSpotError(QStringLiteral("Could not prepare export audio: %1").arg(description));
        co_return NothingToExport{};
    }
    co_return SingleFile{joined.value().toLocalFile(), name};
}

void Exporting::exportTo(const SingleFile &file, const QString &destination) {
    if (const auto copied = copyFile(file.path, destination); !copied)
        m_parts.document.setSpotError(QStringLiteral("Export failed: %1").arg(copied.error().description()));
}

void Exporting::exportToFolder(const Folder &folder, const QString &destination) {
    QSet<QString> used;
    QStringList failed;
    for (const Clip &clip : folder.clips) {
        const QString name = freeExportName(clip, destination, used);
        used.insert(name.toLower());
        if (!copyFile(clip.path, destination + u'/' + name))
            failed.append(name);
    }
    if (!failed.isEmpty())
        m_parts.document.setSpotError(QStringLiteral("Export failed for: %1").arg(failed.join(QStringLiteral(", "))));
}

QString Exporting::dialogTitle() {
    return QStringLiteral("Export Audio");
}

QString Exporting::folderMessage(const Folder &folder) {
    return QStringLiteral("Choose a folder for the %1 exported clips.").arg(folder.clips.size());
}

} // namespace orlenta::controller
