#include "support/SmallDisk.h"

#include <array>
#include <cstdint>
#include <linux/capability.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
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

/// Root writes whatever the permissions say, until it gives up that right, which it can't get back.
bool giveUpOverride() {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> rights{};
    if (::syscall(SYS_capget, &header, rights.data()) != 0)
        return false;
    constexpr std::uint32_t override = 1U << CAP_DAC_OVERRIDE;
    rights[0].effective &= ~override;
    rights[0].permitted &= ~override;
    return ::syscall(SYS_capset, &header, rights.data()) == 0;
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
    if (!giveUpOverride())
        return false;
    return QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
}

} // namespace orlenta::testing
