#include "model/ProjectStore.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include "base/files/AtomicFile.h"
#include "base/files/PendingFile.h"
#include "base/files/RegularFile.h"
#include "model/FileNameGuard.h"
#include "model/ProjectJson.h"

namespace orlenta::model {
namespace {

using base::FileError;

constexpr QLatin1String packageFileName("project.json");
constexpr QLatin1String packageFileSuffix(".orl.json");
constexpr QLatin1String projectFileSuffix(".orl");

QString cleanPath(const QString &path) {
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

QString nameIn(const QString &path) {
    return QFileInfo(QDir::cleanPath(path)).fileName();
}

// A leading or trailing dot doesn't start an extension.
qsizetype extensionDot(const QString &name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 && dot + 1 < name.size() ? dot : name.size();
}

QString withoutExtension(const QString &name) {
    return name.left(extensionDot(name));
}

bool hasProjectExtension(const QString &name) {
    return name.mid(extensionDot(name)) == projectFileSuffix;
}

bool isProjectFileName(const QString &name) {
    return hasProjectExtension(name) || name == packageFileName || name.endsWith(packageFileSuffix);
}

bool isPackage(const QString &folder) {
    return hasProjectExtension(nameIn(folder)) && QFileInfo(folder).isDir();
}

QString pathIn(const QString &folder, const QString &name) {
    return QDir(folder).filePath(name);
}

// The first match in the file system's order, including hidden files.
template <typename Accepts>
std::optional<QString> firstFile(const QString &folder, Accepts accepts) {
    QDirIterator items(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (items.hasNext()) {
        const QString path = items.next();
        if (accepts(items.fileName()) && !items.fileInfo().isDir())
            return path;
    }
    return std::nullopt;
}

std::optional<QString> firstWithProjectExtension(const QString &folder) {
    return firstFile(folder, [](const QString &name) { return hasProjectExtension(name); });
}

QString cacheIndexIn(const QString &folder) {
    return pathIn(folder, QStringLiteral(".orlenta/cache-index.json"));
}

std::optional<QString> existing(const QString &path) {
    return QFileInfo::exists(path) ? std::optional(path) : std::nullopt;
}

QString namedProjectFile(const QString &folder, const QString &projectName) {
    const QString guarded = guardedFileName(projectName);
    return pathIn(folder, (guarded.isEmpty() ? withoutExtension(nameIn(folder)) : guarded) + projectFileSuffix);
}

std::optional<QString> packageFile(const QString &folder) {
    if (const auto plain = existing(pathIn(folder, packageFileName)))
        return plain;
    if (const auto named = existing(pathIn(folder, withoutExtension(nameIn(folder)) + packageFileSuffix)))
        return named;
    return firstFile(folder, [](const QString &name) { return name.endsWith(packageFileSuffix); });
}

std::optional<QString> projectFileForReading(const QString &folder) {
    if (!isPackage(folder)) {
        if (const auto named = existing(namedProjectFile(folder, withoutExtension(nameIn(folder)))))
            return named;
        if (const auto first = firstWithProjectExtension(folder))
            return first;
    }
    return packageFile(folder);
}

ProjectStoreError storeError(const std::variant<NewerSchema, DecodingError> &error) {
    if (const auto *newer = std::get_if<NewerSchema>(&error))
        return ProjectStoreError(ProjectStoreError::NewerSchemaVersion{newer->version});
    return ProjectStoreError(ProjectStoreError::CorruptedFile{std::get<DecodingError>(error).detail});
}

base::Result<Project, ProjectStoreError> readProjectFile(const QString &path, base::Timestamp now) {
    const qint64 size = QFileInfo(path).size();
    if (size > ProjectStore::largestProjectFile)
        return base::fail(ProjectStoreError(ProjectStoreError::CorruptedFile{
            QStringLiteral("project file is unreasonably large (%1 bytes)").arg(size)}));
    auto bytes = base::readWholeFile(path);
    if (!bytes)
        return base::fail(ProjectStoreError(bytes.error()));
    auto project = decodeProject(std::move(bytes).value(), now);
    if (!project)
        return base::fail(storeError(project.error()));
    return std::move(project).value();
}

base::Result<void, FileError> makeFolder(const QString &path) {
    if (QFileInfo(path).isDir())
        return {};
    const QString parent = QFileInfo(path).absolutePath();
    if (parent != path)
        if (auto made = makeFolder(parent); !made)
            return made;
    if (::mkdir(QFile::encodeName(path).constData(), 0777) == 0)
        return base::syncToDisk(path);
    const int code = errno;
    if (QFileInfo(path).isDir())
        return {};
    return base::fail(FileError::fromErrno(path, code));
}

// Keeps the empty folder in version control. Nothing depends on it, so failures don't matter.
void makeKeepFile(const QString &folder) {
    const QByteArray path = QFile::encodeName(pathIn(folder, QStringLiteral(".gitkeep")));
    const int descriptor = ::open(path.constData(), O_CREAT | O_WRONLY | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (descriptor >= 0)
        ::close(descriptor);
}

base::Result<void, FileError> makeProjectFolders(const QString &folder) {
    if (auto made = makeFolder(folder); !made)
        return made;
    for (const QLatin1String name : {QLatin1String("Audio Files/Generated"), QLatin1String("Audio Files/Recordings"),
                                     QLatin1String("Audio Files/Imports"), QLatin1String("Audio Files/Exports")}) {
        const QString path = pathIn(folder, name);
        if (auto made = makeFolder(path); !made)
            return made;
        makeKeepFile(path);
    }
    const QString index = cacheIndexIn(folder);
    if (auto made = makeFolder(QFileInfo(index).absolutePath()); !made)
        return made;
    return base::writeAtomically(index, QByteArrayLiteral(R"({"schema_version":1,"entries":[]})"));
}

} // namespace

std::optional<QString> ProjectStore::projectFolderForLocation(const QString &path) {
    const QString clean = cleanPath(path);
    if (QFileInfo(clean).isDir())
        return clean;
    return isProjectFileName(nameIn(clean)) ? std::optional(QFileInfo(clean).absolutePath()) : std::nullopt;
}

base::Result<StoredProject, ProjectStoreError> ProjectStore::load(const QString &path, base::Timestamp now,
                                                                  const std::optional<QString> &replacement) {
    const ProjectStoreError notFound(ProjectStoreError::ProjectFileNotFound{});
    const auto folder = projectFolderForLocation(path);
    if (!folder)
        return base::fail(notFound);
    const auto projectFile = QFileInfo(path).isDir() ? projectFileForReading(*folder) : std::optional(cleanPath(path));
    if (projectFile)
        base::removeStaleTemporary(*projectFile);
    base::removeStaleTemporary(cacheIndexIn(*folder));
    const auto file = replacement ? replacement : projectFile;
    if (!file || !QFileInfo::exists(*file))
        return base::fail(notFound);
    auto project = readProjectFile(*file, now);
    if (!project)
        return base::fail(project.error());
    return StoredProject{std::move(project).value(), *folder, projectFile.value_or(QString())};
}

QString ProjectStore::nameWithoutExtension(const QString &name) {
    QString plain = name.trimmed();
    while (hasProjectExtension(plain))
        plain = withoutExtension(plain).trimmed();
    return plain;
}

base::Result<StoredProject, ProjectStoreError> ProjectStore::create(const QString &folder, const QString &name,
                                                                    Project project, base::Timestamp now) {
    StoredProject stored{std::move(project), cleanPath(folder), {}};
    if (auto made = makeProjectFolders(stored.folder); !made)
        return base::fail(ProjectStoreError(made.error()));
    stored.project.projectName = nameWithoutExtension(name);
    stored.file = isPackage(stored.folder) ? pathIn(stored.folder, packageFileName)
                                           : namedProjectFile(stored.folder, stored.project.projectName);
    return save(std::move(stored), now);
}

base::Result<StoredProject, ProjectStoreError> ProjectStore::save(StoredProject stored, base::Timestamp now) {
    stored.project.modifiedAt = now;
    if (stored.file.isEmpty())
        stored.file = projectFileForWriting(stored.folder, stored.project.projectName);
    if (auto written = base::writeAtomically(stored.file, encodeProject(stored.project)); !written)
        return base::fail(ProjectStoreError(written.error()));
    return stored;
}

QString ProjectStore::projectFileForWriting(const QString &folder, const QString &projectName) {
    if (isPackage(folder))
        return packageFile(folder).value_or(pathIn(folder, packageFileName));
    const QString named = namedProjectFile(folder, projectName);
    if (QFileInfo::exists(named))
        return named;
    return firstWithProjectExtension(folder).value_or(named);
}

} // namespace orlenta::model
