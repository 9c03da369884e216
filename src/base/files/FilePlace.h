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

/// The real location of a file to create or replace. Follows symbolic links, even to a target that doesn't exist yet,
/// so that writing never replaces a link. Keeps the folder open. Blocking; any thread.
class FilePlace final {
public:
    /// Fails if the folder doesn't exist, or if the name belongs to anything but a regular file: a rename would replace
    /// a pipe or a device too.
    [[nodiscard]] static Result<FilePlace, FileError> find(const QString &path);

    [[nodiscard]] const FolderHandle &folder() const { return m_folder; }
    /// "<name>.tmp", shortened to the longest name the file system allows.
    [[nodiscard]] QByteArray temporaryName() const;
    /// Whether the file existed when find() ran.
    [[nodiscard]] bool isTaken() const { return m_mode.has_value(); }

    /// Gives `file` the permissions of the file it is about to replace, if any.
    void applyMode(const FileDescriptor &file) const;
    /// Renames a file in `fromFolder` (a descriptor or AT_FDCWD) to this location. Returns 0, or an errno value if
    /// nothing was renamed. Doesn't flush.
    [[nodiscard]] int take(int fromFolder, const QByteArray &fromName) const;

private:
    FilePlace(const QByteArray &folder, QByteArray name);
    [[nodiscard]] int inspect();

    FolderHandle m_folder;
    QByteArray m_name;
    /// Permissions of the file to replace.
    std::optional<mode_t> m_mode;
};

} // namespace orlenta::base
