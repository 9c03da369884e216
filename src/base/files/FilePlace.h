#pragma once

#include <optional>
#include <sys/types.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/files/FileDescriptor.h"
#include "base/files/FileError.h"
#include "base/files/FolderHandle.h"
#include "base/Result.h"

namespace orlenta::base {

/// Where a file that is to be made or replaced really lies. Links have been followed, also one whose target doesn't
/// exist yet, so that a link stays a link. Its folder is held open. Blocking; any thread.
class FilePlace final {
public:
    /// Fails where there is no such folder, or where anything but a plain file has the name: a rename would replace a
    /// pipe or device too.
    [[nodiscard]] static Result<FilePlace, FileError> find(const QString &path);

    [[nodiscard]] const FolderHandle &folder() const { return m_folder; }
    /// "<name>.tmp", shortened where the file system allows no longer name.
    [[nodiscard]] QByteArray temporaryName() const;
    /// Whether there was a file when this was made.
    [[nodiscard]] bool isTaken() const { return m_mode.has_value(); }

    /// Gives an open file the mode of the one that it is going to replace.
    void applyMode(const FileDescriptor &file) const;
    /// Renames a file of `fromFolder` (a descriptor, or AT_FDCWD) onto this place. Gives 0, or an errno value where
    /// nothing was renamed. Flushes nothing.
    [[nodiscard]] int take(int fromFolder, const QByteArray &fromName) const;

private:
    FilePlace(const QByteArray &folder, QByteArray name);
    [[nodiscard]] int inspect();

    FolderHandle m_folder;
    QByteArray m_name;
    /// Of the file to replace.
    std::optional<mode_t> m_mode;
};

} // namespace orlenta::base
