#include "controller/takes/TemporarySweep.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include "base/files/PrivateFolders.h"

namespace orlenta::controller {
namespace {

constexpr std::chrono::seconds temporaryLifetime{604'800};
/// Suffix of a file that is being written.
constexpr QLatin1String unfinished("(\\.tmp)?");

bool isOlderThan(const QFileInfo &item, std::chrono::system_clock::time_point limit) {
    const QDateTime modified = item.fileTime(QFileDevice::FileModificationTime);
    const auto limitMs = std::chrono::duration_cast<std::chrono::milliseconds>(limit.time_since_epoch()).count();
    return modified.isValid() && modified.toMSecsSinceEpoch() < limitMs;
}

void removeItem(const QFileInfo &item) {
    // Remove a link to a folder as a link, never the folder it points to.
    if (item.isDir() && !item.isSymLink())
        QDir(item.absoluteFilePath()).removeRecursively();
    else
        QFile::remove(item.absoluteFilePath());
}

QFileInfoList itemsOf(const QString &folder) {
    return QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

void removeOld(const QString &folder, const QRegularExpression &names, std::chrono::system_clock::time_point limit) {
    for (const QFileInfo &item : itemsOf(folder))
        if (names.match(item.fileName()).hasMatch() && isOlderThan(item, limit))
            removeItem(item);
}

/// A complete file name: one of `prefixes`, a UUID, an extension, then `ending`.
QRegularExpression namedByUuid(const QString &prefixes, QLatin1String ending = {}) {
    return QRegularExpression(QStringLiteral("^%1[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-"
                                             "[0-9A-Fa-f]{12}\\.[A-Za-z0-9]{1,5}%2\\z")
                                  .arg(prefixes, ending));
}

} // namespace

void sweepTemporaryFiles(std::chrono::system_clock::time_point now) {
    sweepTemporaryFolder(base::PrivateFolders::temporary(), now);
    sweepCaches(base::PrivateFolders::caches(), now);
}

void sweepTemporaryFolder(const QString &folder, std::chrono::system_clock::time_point now) {
    if (folder.isEmpty())
        return;
    const auto limit = now - temporaryLifetime;
    const QFileInfo undoAudio(folder + QStringLiteral("/OrlentaDirectionAudioUndo"));
    if (undoAudio.exists() || undoAudio.isSymLink())
        removeItem(undoAudio);
    for (const QString &name : {QStringLiteral("/OrlentaDrag"), QStringLiteral("/OrlentaStitchedAudio")}) {
        const QFileInfo kept(folder + name);
        if (kept.isDir() && !kept.isSymLink())
            for (const QFileInfo &item : itemsOf(kept.absoluteFilePath()))
                if (isOlderThan(item, limit))
                    removeItem(item);
    }
    removeOld(folder, namedByUuid(QStringLiteral("(tts|sts|voice_preview|direction|padded)_(src_)?")), limit);
    removeOld(folder, namedByUuid(QStringLiteral("OrlentaDroppedAudio-"), unfinished), limit);
}

void sweepCaches(const QString &folder, std::chrono::system_clock::time_point now) {
    if (!folder.isEmpty())
        removeOld(folder, namedByUuid(QStringLiteral("(tts|sts|voice_preview|padded)_(src_)?"), unfinished),
                  now - temporaryLifetime);
}

} // namespace orlenta::controller
