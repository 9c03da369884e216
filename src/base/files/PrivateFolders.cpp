#include "base/files/PrivateFolders.h"

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

// Everybody can write to /tmp, so a name found there may be a trap laid by another user. Empty where neither the usual
// name nor a random one can be had.
QString folderInSharedTemporary(const QString &shared) {
    const QByteArray usual = QFile::encodeName(shared + QStringLiteral("/orlenta-") + QString::number(::getuid()));
    if (::mkdir(usual.constData(), 0700) == 0 || isOwnPrivateFolder(usual))
        return QFile::decodeName(usual);
    QByteArray pattern = usual + "-XXXXXX";
    return ::mkdtemp(pattern.data()) != nullptr ? QFile::decodeName(pattern) : QString();
}

QString makeTemporaryFolder(const QString &shared) {
    // Qt gives an empty path for a temporary folder that doesn't exist.
    const QString usual = shared.isEmpty() ? QString() : folderInSharedTemporary(shared);
    if (!usual.isEmpty())
        return usual;
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
        known = makeTemporaryFolder(base);
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
