#pragma once

#include <functional>
#include <stop_token>

#include "base/files/FileError.h"
#include "base/files/RegularFile.h"
#include "base/Result.h"

namespace orlenta::base {

class PendingFile;

/// Lets the caller follow and cancel a long copy.
struct CopyControl {
    std::stop_token stop = {};
    /// Called periodically, on the copying thread, with the bytes copied and the total.
    std::function<void(qint64 done, qint64 total)> progress = {};
};

/// Copies `source`, up to the size it had when opened, into the empty `target`. Uses a reflink or an in-kernel copy
/// where the file systems support it. Fails if the source shrinks; ignores data appended to it. The error names the
/// file at fault; after a cancellation, FileError::isCancelled() is true. Blocking; any thread.
[[nodiscard]] Result<void, FileError> copyContent(const RegularFile &source, const PendingFile &target,
                                                  const CopyControl &control);

} // namespace orlenta::base
