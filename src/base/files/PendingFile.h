#pragma once

#include <QtCore/QString>

#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"
#include "base/files/FilePlace.h"
#include "base/Result.h"

namespace orlenta::base {

/// Whether what is put in place must be on disk, or may be lost in a power cut.
enum class Flush { ToDisk, Never };

/// New content for a file, written to "<name>.tmp" beside it until it takes the file's place as a whole. Destroyed
/// before that, it leaves the file as it was and no temporary one. Two for one file take turns, across processes too,
/// so one thread must not hold both; a temporary file that a killed process left is replaced. One thread at a time;
/// blocking.
class PendingFile final {
public:
    [[nodiscard]] static Result<PendingFile, FileError> create(const QString &path);
    PendingFile(PendingFile &&other) noexcept;
    PendingFile &operator=(PendingFile &&) = delete;
    ~PendingFile();

    [[nodiscard]] const QString &path() const { return m_path; }
    /// For writing, and for reading what was written.
    [[nodiscard]] const FileDescriptor &descriptor() const { return m_descriptor; }
    /// Makes it the file, given that it is `size` bytes long by now: flushes it, renames it and flushes the folder's
    /// entry. An existing file's mode is kept; a new file has 0644 less the umask. Only where the last flush fails is
    /// the new content in place without being certain to outlive a power cut.
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

/// Removes what a killed process may have left of its last PendingFile for `path`; one that is being written stays.
/// Blocking; any thread.
void removeStaleTemporary(const QString &path);

} // namespace orlenta::base
