#include "base/PrivateFolders.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

namespace orlenta::base {
namespace {

QString folderMade(const QString &path) {
    QDir().mkpath(path);
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
    return ::mkdtemp(pattern.data()) != nullptr ? QFile::decodeName(pattern) : QString();
}

} // namespace

QString PrivateFolders::temporary() {
    static QString known;
    if (known.isEmpty() || !isOwnPrivateFolder(QFile::encodeName(known)) ||
        !known.startsWith(QDir::tempPath() + u'/'))
        known = makeTemporaryFolder();
    return known;
}

QString PrivateFolders::caches() {
    return folderMade(QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/orlenta"));
}

QString PrivateFolders::applicationSupport() {
    return folderMade(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/orlenta"));
}

} // namespace orlenta::base
