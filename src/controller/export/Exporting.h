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

/// How several selected lines are handed on: joined into one clip, or each by itself.
enum class MultiLineOutput { Continuous, Individual };

/// A file that was made for one export: the last who holds this removes it. Any thread.
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

/// Copies the selected lines' audio to where the user wants it. Failures go to the controller's spotError; a copy's go
/// to the log as well, however little of the project is left by then. Main thread; joining runs on workers, copying on
/// one thread for all the process's exports. Both go on when the project goes, and quitting waits for the copies.
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
        /// With the extension ".wav".
        QString suggestedName;
        /// Keeps the file at `path` where it is several lines' audio.
        std::shared_ptr<const JoinedFile> joined = {};
    };
    /// Several files, for a folder dialog.
    struct Folder {
        QList<Clip> clips;
    };
    using Plan = std::variant<NothingToExport, SingleFile, Folder>;

    explicit Exporting(ProjectController &controller) : m_controller(controller) {}

    /// The selected lines that there are, in display order; empty unless every one has audio.
    [[nodiscard]] QList<Clip> linesToExport() const;
    /// Audio is being joined or copied.
    [[nodiscard]] bool isBusy() const { return m_running > 0; }
    /// Prepares an export of the selection; joins the lines' audio where `output` asks for one clip.
    QCoro::Task<Plan> plan(MultiLineOutput output);
    /// Copies the prepared file to the chosen path, in place of what is there.
    QCoro::Task<void> exportTo(SingleFile file, QString destination);
    /// Copies the clips under their own names; a name that is taken gets a number.
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
    /// Waits for a copy and tells the user what went wrong with it.
    QCoro::Task<void> finish(QFuture<QString> copying);

    ProjectController &m_controller;
    int m_running = 0;
};

} // namespace orlenta::controller
