#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "model/Ids.h"

namespace orlenta::controller {

class ProjectController;

/// Puts recorded and imported direction takes on lines. Copies and converts off the main thread. If the line or project
/// is gone by then, the operation ends silently; failures appear as the controller's spotError. In a project without a
/// folder the file goes to the caches folder. Main thread.
class DirectionAudio final : public QObject {
    Q_OBJECT
public:
    explicit DirectionAudio(ProjectController &controller) : m_controller(controller) {}

    /// A file is being stored.
    [[nodiscard]] bool isBusy() const { return m_underWay > 0; }

    /// Stores a finished recording in the project unconverted and makes it the line's active recording. On success the
    /// recorder's own file is gone; on failure it is still there.
    QCoro::Task<void> installRecording(QUrl file, double durationSeconds, model::LineId id);
    /// Converts the user's file to the standard format and makes it the line's active recording.
    QCoro::Task<void> importDirectionAudio(QUrl source, model::LineId id);
    /// Like importDirectionAudio(), for a dropped file that may disappear after the drop: it is opened before the first
    /// suspension and copied aside.
    QCoro::Task<void> importDroppedFile(QUrl source, model::LineId id);

Q_SIGNALS:
    /// A recording or imported file has become the line's direction.
    void adopted(const orlenta::model::LineId &id);
    void isBusyChanged();
    /// The line of a finished recording is gone. The file stays where it was. The duration is in seconds.
    void lineGone(const QUrl &file, double durationSeconds, const orlenta::model::LineId &id);

private:
    class UnderWay;

    /// Returns whether the file was imported.
    QCoro::Task<bool> import(QUrl source, QString name, model::LineId id);
    /// A path for a new recording. Its folder exists.
    [[nodiscard]] base::Result<QString, ProjectControllerError> newPath(const QString &stem) const;
    /// The undo step is "Import Direction Audio".
    void adopt(const QString &path, double durationSeconds, const model::LineId &id);
    void fail(const QString &description);
    /// The message includes the name of the user's file.
    void failToImport(const QString &name, const QString &description);
    void failToStore(const QString &recording, const ProjectControllerError &error);

    ProjectController &m_controller;
    int m_underWay = 0;
};

} // namespace orlenta::controller
