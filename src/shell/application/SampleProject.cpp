#include "shell/application/SampleProject.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include "base/files/AtomicFile.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

base::Result<void, base::FileError> copyFolderContents(const QString &source, const QString &destination) {
    QDirIterator files(source, QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString from = files.next();
        const QString to = destination + u'/' + QDir(source).relativeFilePath(from);
        if (!QDir().mkpath(QFileInfo(to).path()))
            return base::fail(base::FileError::withReason(QFileInfo(to).path(), u"The folder couldn't be created."_s));
        // Copy only the bytes: installed files may be read-only.
        if (auto copied = base::copyAtomically(from, to); !copied)
            return copied;
    }
    return {};
}

} // namespace

std::optional<QString> SampleProject::shippedFolder() {
    const QString beside = QCoreApplication::applicationDirPath() + u"/../share/orlenta/sample-project"_s;
    const QString folder = QDir::cleanPath(beside);
    return QDir(folder).exists() ? std::optional(folder) : std::nullopt;
}

QString SampleProject::defaultDestination() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + u"/Orlenta Sample"_s;
}

base::Result<void, base::FileError> SampleProject::copy(const QString &source, const QString &destination) {
    if (QFileInfo::exists(destination))
        return base::fail(
            base::FileError::withReason(destination, u"A file or folder with this name already exists."_s));
    if (!QDir().mkpath(destination))
        return base::fail(base::FileError::withReason(destination, u"The folder couldn't be created."_s));
    auto copied = copyFolderContents(source, destination);
    if (!copied)
        QDir(destination).removeRecursively();
    return copied;
}

} // namespace orlenta::shell
