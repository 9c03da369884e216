#pragma once

#include <optional>

#include <QtCore/QString>

#include "base/Clock.h"
#include "base/Result.h"
#include "model/Project.h"
#include "model/ProjectStoreError.h"

namespace orlenta::model {

/// A project and where it lives, as absolute paths.
struct StoredProject {
    Project project;
    QString folder;
    /// The project file that was read or made. Saving writes this one, whatever other project files the folder has.
    /// Empty if none is known yet.
    QString file;
};

/// Reads and writes project folders. Stateless; takes local paths. Blocking; any thread.
class ProjectStore final {
public:
    ProjectStore() = delete;

    /// Larger project files are refused without reading them.
    static constexpr qint64 largestProjectFile = 67'108'864;

    /// The project folder for a path: a directory itself, or the directory that contains the project file.
    [[nodiscard]] static std::optional<QString> projectFolderForLocation(const QString &path);

    /// Loads the project from a folder or a project file. `replacement` is a file to read instead of the project file.
    static base::Result<StoredProject, ProjectStoreError> load(const QString &path, base::Timestamp now,
                                                               const std::optional<QString> &replacement = {});

    /// The name without the extension of project files, which would make a package of the project's folder.
    [[nodiscard]] static QString nameWithoutExtension(const QString &name);

    /// Creates the folder of a new project with all its contents, and saves `project` in it as `name`, without the
    /// extension of project files.
    static base::Result<StoredProject, ProjectStoreError> create(const QString &folder, const QString &name,
                                                                 Project project, base::Timestamp now);

    /// Saves the project file in an existing folder, dated `now`. Returns the project as saved.
    static base::Result<StoredProject, ProjectStoreError> save(StoredProject stored, base::Timestamp now);

    /// The file that saving a project of this name writes if its file isn't known. An existing project file keeps its
    /// own name.
    [[nodiscard]] static QString projectFileForWriting(const QString &folder, const QString &projectName);
};

} // namespace orlenta::model
