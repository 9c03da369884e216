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

// The XDG base directory rules want every missing level created with mode 0700. Passing the mode to mkdir leaves no
// moment in which others could enter.
bool makePrivate(const QString &path) {
    if (QFileInfo(path).isDir())
        return true;
    const QString parent = QFileInfo(path).absolutePath();
    if (parent != path && !makePrivate(parent))
        return false;
    return ::mkdir(QFile::encodeName(path).constData(), 0700) == 0 || QFileInfo(path).isDir();
}

// Failures aren't reported here: the caller's first write fails with the system's message.
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

// Anybody can write to /tmp, so an existing folder may be a trap set by another user. Returns an empty string if
// neither the usual name nor a random one works.
QString folderInSharedTemporary(const QString &shared) {
    const QByteArray usual = QFile::encodeName(shared + QStringLiteral("/orlenta-") + QString::number(::getuid()));
    if (::mkdir(usual.constData(), 0700) == 0 || isOwnPrivateFolder(usual))
        return QFile::decodeName(usual);
    QByteArray pattern = usual + "-XXXXXX";
    return ::mkdtemp(pattern.data()) != nullptr ? QFile::decodeName(pattern) : QString();
}

QString makeTemporaryFolder(const QString &shared) {
    // Qt returns an empty path if the temporary folder doesn't exist.
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
