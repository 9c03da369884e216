#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>

namespace orlenta::localvoices {

/// What a process has given up for the rest of its life.
struct Confinement {
    /// Opening anything but what lies below the readable folder (Landlock).
    bool files = false;
    /// Every system call that speaking doesn't need: sockets, new programs, signals to others (seccomp).
    bool calls = false;
};

/// Takes from the calling process what turning text into sound doesn't need, since the engines' C code reads text from
/// anywhere: files but those below `readableFolder`, the network, other programs, more than its share of memory and
/// processor time, and the descriptors it has inherited past standard error. What the kernel lacks, or a container
/// forbids, is left out. Call it before there is a second thread.
Confinement confineProcess(const QByteArray &readableFolder);

/// A sentence for each part that this kernel can't give.
[[nodiscard]] QStringList confinementGaps();

} // namespace orlenta::localvoices
