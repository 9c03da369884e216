#pragma once

#include <memory>
#include <variant>

#include <qcoro/qcorotask.h>
#include <QtCore/QFuture>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// How several selected lines are exported: joined into one clip, or one clip each.
enum class MultiLineOutput { Continuous, Individual };

/// A temporary file made for one export. Removed with its last owner. Any thread.
class JoinedFile final {
public:
    explicit JoinedFile(QString path);
    ~JoinedFile();
    JoinedFile(const JoinedFile &) = delete;
    JoinedFile &operator=(const JoinedFile &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }

private:
    QString m_path;
};

/// Exports the selected lines' audio to files the user chooses. Failures appear as the controller's spotError; failed
/// copies are also logged, even if the project is closed by then. Joining runs in the global pool, copying on one
/// thread shared by all exports. Both continue when the project closes, and quitting waits for the copies. Main thread.
class Exporting final : public QObject {
    Q_OBJECT
public:
    struct Clip {
        model::LineId lineId;
        QString path;
        QString clipName;
    };
    /// Nothing is selected, a selected line has no audio, or joining failed.
    struct NothingToExport {};
    /// One file, for a save dialog.
    struct SingleFile {
        QString path;
        /// Ends in ".wav".
        QString suggestedName;
        /// Owns the file at `path` if it joins several lines.
        std::shared_ptr<const JoinedFile> joined = {};
    };
    /// Several files, for a folder dialog.
    struct Folder {
        QList<Clip> clips;
    };
    using Plan = std::variant<NothingToExport, SingleFile, Folder>;

    explicit Exporting(ProjectController &controller) : m_controller(controller) {}

    /// The selected lines in display order; empty unless all of them have audio.
    [[nodiscard]] QList<Clip> linesToExport() const;
    /// Audio is being joined or copied.
    [[nodiscard]] bool isBusy() const { return m_running > 0; }
    /// Prepares the export of the selection. Joins the lines' audio if `output` is Continuous.
    QCoro::Task<Plan> plan(MultiLineOutput output);
    /// Copies the prepared file to the chosen path, replacing any existing file.
    QCoro::Task<void> exportTo(SingleFile file, QString destination);
    /// Copies the clips under their own names. A number is added to a name that is taken.
    QCoro::Task<void> exportToFolder(Folder folder, QString destination);

    /// "Export Audio", the title of both dialogs.
    [[nodiscard]] static QString dialogTitle();
    /// "Choose a folder for the {n} exported clips."
    [[nodiscard]] static QString folderMessage(const Folder &folder);

Q_SIGNALS:
    void isBusyChanged();

private:
    void begin();
    void end();
    /// Waits for a copy, then shows its failure, or that `what` is in `folder`.
    QCoro::Task<void> finish(QFuture<QString> copying, QString what, QString folder);

    ProjectController &m_controller;
    int m_running = 0;
};

} // namespace orlenta::controller
