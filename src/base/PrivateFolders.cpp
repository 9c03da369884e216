#include "base/PrivateFolders.h"

#include <cstdlib>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

namespace orlenta::base {
namespace {

// Every level that is missing is made for the user alone, as the base directory rules ask; the mode is given to the
// call, so that no moment passes in which the folder is open to others.
bool makePrivate(const QString &path) {
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).absolutePath();
    if (parent != path && !makePrivate(parent))
        return false;
    return ::mkdir(QFile::encodeName(path).constData(), 0700) == 0 || QFileInfo(path).isDir();
}

// A failure shows when the caller writes to the folder, with the system's own words.
QString privateFolder(QStandardPaths::StandardLocation location) {
    const QString path = QStandardPaths::writableLocation(location) + QStringLiteral("/orlenta");
    makePrivate(path);
    return path;
}

bool isOwnPrivateFolder(const QByteArray &path) {
    struct stat status {};
    return ::lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == ::getuid() &&
           (status.st_mode & 0077) == 0;
}

// Everybody can write to /tmp, so a name found there may be a trap laid by another user.
QString makeTemporaryFolder() {
    const QString base = QDir::tempPath() + QStringLiteral("/orlenta-") + QString::number(::getuid());
    const QByteArray encoded = QFile::encodeName(base);
    if (::mkdir(encoded.constData(), 0700) == 0 || isOwnPrivateFolder(encoded))
        return base;
    QByteArray pattern = encoded + "-XXXXXX";
    if (::mkdtemp(pattern.data()) != nullptr)
        return QFile::decodeName(pattern);
    const QString atHome = privateFolder(QStandardPaths::GenericCacheLocation) + QStringLiteral("/temporary");
    makePrivate(atHome);
    return atHome;
}

} // namespace

QString PrivateFolders::temporary() {
    static std::mutex mutex;
    static QString known;
    static QString knownBase;
    const std::scoped_lock lock(mutex);
    const QString base = QDir::tempPath();
    if (known.isEmpty() || base != knownBase || !isOwnPrivateFolder(QFile::encodeName(known)))
        known = makeTemporaryFolder();
    knownBase = base;
    return known;
}

QString PrivateFolders::caches() {
    return privateFolder(QStandardPaths::GenericCacheLocation);
}

QString PrivateFolders::applicationSupport() {
    return privateFolder(QStandardPaths::GenericDataLocation);
}

} // namespace orlenta::base
