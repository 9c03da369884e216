#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// Puts recorded and imported direction takes on lines. Copying and converting run off the main thread; a line or
/// project that has gone by then ends the operation without a word, and a failure goes to the controller's spotError.
/// In a project without a folder the file stays in the caches folder. Main thread.
class DirectionAudio final : public QObject {
    Q_OBJECT
public:
    explicit DirectionAudio(ProjectController &controller) : m_controller(controller) {}

    /// A file is on its way to its line.
    [[nodiscard]] bool isBusy() const { return m_underWay > 0; }

    /// Copies a finished recording of that length into the project, as it is, and makes it the line's recording in use.
    /// Afterwards the recorder's own file is gone; after a failure it is still there.
    QCoro::Task<void> installRecording(QUrl file, double durationSeconds, model::LineId id);
    /// Takes a file of the user's into the project in the standard format and makes it the line's recording in use.
    QCoro::Task<void> importDirectionAudio(QUrl source, model::LineId id);
    /// The same for a file that a drop lends: it is copied aside before this first gives way.
    QCoro::Task<void> importDroppedFile(QUrl source, model::LineId id);

Q_SIGNALS:
    /// A recording or an imported file has become the line's direction.
    void adopted(const orlenta::model::LineId &id);
    void isBusyChanged();
    /// A finished recording of that length in seconds has no line to go on any more; its file is where it was.
    void lineGone(const QUrl &file, double durationSeconds, const orlenta::model::LineId &id);

private:
    class UnderWay;

    /// Whether it came to its line.
    QCoro::Task<bool> import(QUrl source, QString name, model::LineId id);
    /// A path for a new recording of that name, in a folder that exists.
    [[nodiscard]] base::Result<QString, ProjectControllerError> newPath(const QString &stem) const;
    /// The undo step is "Import Direction Audio".
    void adopt(const QString &path, double durationSeconds, const model::LineId &id);
    void fail(const QString &description);
    /// Tells which of the user's files it was.
    void failToImport(const QString &name, const QString &description);
    void failToStore(const QString &recording, const ProjectControllerError &error);

    ProjectController &m_controller;
    int m_underWay = 0;
};

} // namespace orlenta::controller
