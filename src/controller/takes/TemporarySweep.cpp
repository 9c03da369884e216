#include "controller/takes/TemporarySweep.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include "base/files/PrivateFolders.h"

namespace orlenta::controller {
namespace {

constexpr std::chrono::seconds temporaryLifetime{604'800};

bool isOlderThan(const QFileInfo &item, std::chrono::system_clock::time_point limit) {
    const QDateTime modified = item.fileTime(QFileDevice::FileModificationTime);
    const auto limitMs = std::chrono::duration_cast<std::chrono::milliseconds>(limit.time_since_epoch()).count();
    return modified.isValid() && modified.toMSecsSinceEpoch() < limitMs;
}

void removeItem(const QFileInfo &item) {
    // A link to a folder goes as the link it is, never with what it points to.
    if (item.isDir() && !item.isSymLink())
        QDir(item.absoluteFilePath()).removeRecursively();
    else
        QFile::remove(item.absoluteFilePath());
}

QFileInfoList itemsOf(const QString &folder) {
    return QDir(folder).entryInfoList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

void sweepTemporaryFiles(std::chrono::system_clock::time_point now) {
    sweepTemporaryFiles(base::PrivateFolders::temporary(), now);
}

void sweepTemporaryFiles(const QString &temporaryFolder, std::chrono::system_clock::time_point now) {
    if (temporaryFolder.isEmpty())
        return;
    static const QRegularExpression swept(
        QStringLiteral("^(tts|sts|voice_preview|direction|padded)_(src_)?[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-"
                       "[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}\\.[A-Za-z0-9]{1,5}\\z"));
    const auto limit = now - temporaryLifetime;
    const QFileInfo undoAudio(temporaryFolder + QStringLiteral("/OrlentaDirectionAudioUndo"));
    if (undoAudio.exists() || undoAudio.isSymLink())
        removeItem(undoAudio);
    const QFileInfo drags(temporaryFolder + QStringLiteral("/OrlentaDrag"));
    if (drags.isDir() && !drags.isSymLink())
        for (const QFileInfo &item : itemsOf(drags.absoluteFilePath()))
            if (isOlderThan(item, limit))
                removeItem(item);
    for (const QFileInfo &item : itemsOf(temporaryFolder))
        if (swept.match(item.fileName()).hasMatch() && isOlderThan(item, limit))
            removeItem(item);
}

} // namespace orlenta::controller
