#include "controller/generation/TakeStorage.h"

#include <sys/statvfs.h>
#include <unistd.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/files/PrivateFolders.h"
#include "controller/takes/AudioKind.h"

namespace orlenta::controller {
namespace {

/// `path`, or the nearest existing folder above it.
QString nearestExisting(QString path) {
    while (!QFileInfo::exists(path))
        path = QFileInfo(path).absolutePath();
    return path;
}

enum class FolderProblem { ReadOnly, NoRoom };

std::optional<FolderProblem> problemOfFolder(const QString &folder, qint64 bytes) {
    const QByteArray path = QFile::encodeName(folder);
    struct statvfs volume {};
    if (!QFileInfo(folder).isDir() || ::access(path.constData(), W_OK | X_OK) != 0)
        return FolderProblem::ReadOnly;
    // Unknown free space doesn't prevent a generation.
    if (::statvfs(path.constData(), &volume) != 0)
        return std::nullopt;
    if ((volume.f_flag & ST_RDONLY) != 0)
        return FolderProblem::ReadOnly;
    const auto room = static_cast<double>(volume.f_bavail) * static_cast<double>(volume.f_frsize);
    return room < static_cast<double>(bytes) ? std::optional(FolderProblem::NoRoom) : std::nullopt;
}

} // namespace

std::optional<SkipReason> takeStorageProblem(const QString &projectFolder, qint64 bytes) {
    // The reply and the converted take exist here side by side.
    if (const auto problem = problemOfFolder(base::PrivateFolders::caches(), 2 * bytes))
        return problem == FolderProblem::NoRoom ? SkipReason::NoRoom : SkipReason::CacheFolderReadOnly;
    if (projectFolder.isEmpty())
        return std::nullopt;
    if (!QFileInfo(projectFolder).isDir())
        return SkipReason::ProjectFolderMissing;
    const QString audioFolder = QDir::cleanPath(projectFolder + u'/' + audioKindPath(AudioKind::Generated));
    if (const auto problem = problemOfFolder(nearestExisting(audioFolder), bytes))
        return problem == FolderProblem::NoRoom ? SkipReason::NoRoom : SkipReason::ProjectFolderReadOnly;
    return std::nullopt;
}

bool isReadOnlyFolder(const QString &folder) {
    return problemOfFolder(folder, 0) == FolderProblem::ReadOnly;
}

} // namespace orlenta::controller
