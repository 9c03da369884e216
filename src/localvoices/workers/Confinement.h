#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

namespace orlenta::localvoices {

/// Which restrictions the kernel has put into effect.
struct Confinement {
    /// Files outside the readable folder are out of reach (Landlock).
    bool files = false;
    /// System calls that speaking doesn't need fail: sockets, new processes, writing files, signals (seccomp).
    bool calls = false;
};

/// Drops all rights that speaking doesn't need, for good: the engines are C libraries fed with untrusted text. That is
/// files outside `readableFolder`, the network, other processes and inherited descriptors; memory and processor time
/// are limited. Skips what the kernel lacks or a container forbids. Call it while the process has one thread.
Confinement confineProcess(const QByteArray &readableFolder);

/// One sentence for each restriction that this kernel doesn't support.
[[nodiscard]] QStringList confinementGaps();

} // namespace orlenta::localvoices
