#pragma once

#include <functional>
#include <stop_token>

#include "base/files/FileError.h"
#include "base/files/RegularFile.h"
#include "base/Result.h"

namespace orlenta::base {

class PendingFile;

/// How the caller follows a long copy, and calls it off.
struct CopyControl {
    std::stop_token stop = {};
    /// Bytes done and bytes in all, from time to time, on the copying thread.
    std::function<void(qint64 done, qint64 total)> progress = {};
};

/// Copies what `source` held when it was opened to the still empty `target`; the error names the file that it is about.
/// Shares the blocks or lets the kernel copy where the file systems can. A source that gets shorter meanwhile fails;
/// what is added to it stays out. Called off, it fails with FileError::isCancelled(). Blocking; any thread.
[[nodiscard]] Result<void, FileError> copyContent(const RegularFile &source, const PendingFile &target,
                                                  const CopyControl &control);

} // namespace orlenta::base
