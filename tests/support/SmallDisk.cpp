#include "support/SmallDisk.h"

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <QtCore/QFile>

namespace orlenta::testing {
namespace {

bool put(const QString &path, const QByteArray &text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

// Only root may mount, except in a user namespace of one's own.
bool enterOwnMounts() {
    const QByteArray user = QByteArray::number(::geteuid());
    const QByteArray group = QByteArray::number(::getegid());
    const bool isRoot = ::geteuid() == 0;
    if (::unshare(CLONE_NEWNS | (isRoot ? 0 : CLONE_NEWUSER)) != 0)
        return false;
    if (!isRoot && !(put(QStringLiteral("/proc/self/setgroups"), "deny") &&
                     put(QStringLiteral("/proc/self/uid_map"), user + ' ' + user + " 1") &&
                     put(QStringLiteral("/proc/self/gid_map"), group + ' ' + group + " 1")))
        return false;
    return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

SmallDisk::SmallDisk(qint64 bytes) {
    static const bool hasOwnMounts = enterOwnMounts();
    const QByteArray options = "size=" + QByteArray::number(bytes);
    if (!hasOwnMounts ||
        ::mount("none", QFile::encodeName(m_folder.path()).constData(), "tmpfs", 0, options.constData()) != 0)
        m_limit.emplace(static_cast<rlim_t>(bytes));
}

SmallDisk::~SmallDisk() {
    if (!m_readOnly.isEmpty())
        QFile::setPermissions(m_readOnly, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    if (isMounted())
        ::umount2(QFile::encodeName(m_folder.path()).constData(), MNT_DETACH);
}

bool SmallDisk::makeReadOnly(const QString &folder) {
    if (isMounted())
        return ::mount(nullptr, QFile::encodeName(m_folder.path()).constData(), nullptr, MS_REMOUNT | MS_RDONLY,
                       nullptr) == 0;
    m_readOnly = folder;
    return QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
}

} // namespace orlenta::testing
