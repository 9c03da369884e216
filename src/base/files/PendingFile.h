#pragma once

#include <QtCore/QString>

#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"
#include "base/files/FilePlace.h"
#include "base/Result.h"

namespace orlenta::base {

/// Whether commit() flushes to disk or accepts losing the file in a power cut.
enum class Flush { ToDisk, Never };

/// New content for a file, written to "<name>.tmp" next to it until commit() replaces the file in one step. Without
/// commit(), the destructor removes the temporary file and the old file stays. Only one PendingFile per file exists at
/// a time, across processes: create() waits for the other one, so a thread that holds one deadlocks if it creates
/// another. A temporary file left by a killed process is replaced. One thread at a time; blocking.
class PendingFile final {
public:
    [[nodiscard]] static Result<PendingFile, FileError> create(const QString &path);
    PendingFile(PendingFile &&other) noexcept;
    PendingFile &operator=(PendingFile &&) = delete;
    ~PendingFile();

    [[nodiscard]] const QString &path() const { return m_path; }
    /// Open for reading and writing.
    [[nodiscard]] const FileDescriptor &descriptor() const { return m_descriptor; }
    /// Checks that `size` bytes were written, flushes the file, renames it into place and flushes the folder. An
    /// existing file keeps its permissions; a new file gets 0644 minus the umask. If only the flush of the folder
    /// fails, the new content is in place but may not survive a power cut.
    Result<void, FileError> commit(qint64 size, Flush flush = Flush::ToDisk);

private:
    PendingFile(QString path, FilePlace place);
    [[nodiscard]] int open();
    [[nodiscard]] int takePlace();

    QString m_path;
    FilePlace m_place;
    FileDescriptor m_descriptor;
    bool m_isOurs = false;
};

/// Removes the temporary file that a killed process may have left for `path`, unless another process is writing it.
/// Blocking; any thread.
void removeStaleTemporary(const QString &path);

} // namespace orlenta::base
