#pragma once

#include <optional>

#include <QtCore/QString>

#include "base/Clock.h"
#include "base/Result.h"
#include "model/Project.h"
#include "model/ProjectStoreError.h"

namespace orlenta::model {

/// A project and the folder it lives in.
struct StoredProject {
    Project project;
    QString folder;
};

/// How a project lies on disk. Without state; paths are absolute local paths. Blocking, any thread.
class ProjectStore final {
public:
    ProjectStore() = delete;

    /// Larger project files are refused unread.
    static constexpr qint64 largestProjectFile = 67'108'864;

    /// The project folder that a path names: an existing directory is itself, a project file's is its parent.
    [[nodiscard]] static std::optional<QString> projectFolderForLocation(const QString &path);

    /// Reads the project of a folder or of a project file. `replacement` is read in the project file's place.
    static base::Result<StoredProject, ProjectStoreError> load(const QString &path, base::Timestamp now,
                                                               const std::optional<QString> &replacement = {});

    /// Makes the folder of a new project with everything in it and writes `project` under `name`.
    static base::Result<StoredProject, ProjectStoreError> create(const QString &folder, const QString &name,
                                                                 Project project, base::Timestamp now);

    /// Writes the project file of an existing folder, dated `now`; gives the value as stored.
    static base::Result<Project, ProjectStoreError> save(Project project, const QString &folder, base::Timestamp now);

    /// The file that a save of a project of this name goes to: one already there keeps its own name.
    [[nodiscard]] static QString projectFileForWriting(const QString &folder, const QString &projectName);
};

} // namespace orlenta::model
