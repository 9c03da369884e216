#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QUrl>

#include "audio/files/AudioImporter.h"
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
    /// A file of the user's is being imported.
    [[nodiscard]] bool isImporting() const { return !m_imports.isEmpty(); }
    /// The share done of all imports together, 0 to 1.
    [[nodiscard]] double importProgress() const;
    /// Ends the running imports; nothing of them stays, and no error is reported.
    void cancelImports();

    /// Stores a finished recording in the project unconverted and makes it the line's active recording. On success the
    /// recorder's own file is gone; on failure it is still there, and recordingKept() follows.
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
    /// An import has begun, advanced or ended.
    void importProgressChanged();
    /// The line of a finished recording is gone. The file stays where it was. The duration is in seconds.
    void lineGone(const QUrl &file, double durationSeconds, const orlenta::model::LineId &id);
    /// A finished recording couldn't be stored. It can't be made again, so the user must be told where it is.
    void recordingKept(const QUrl &file, double durationSeconds, const orlenta::model::LineId &id,
                       const QString &reason);

private:
    class UnderWay;
    class Import;

    /// Starts the work on a worker. Its progress moves the import's share from its present value to `end`.
    template <typename Work>
    [[nodiscard]] auto startImporting(const Work &work, Import *import, double end);
    /// Returns whether the file was imported.
    QCoro::Task<bool> importFile(QUrl source, QString name, model::LineId id, Import *import);
    /// A path for a new recording. Its folder exists.
    [[nodiscard]] base::Result<QString, ProjectControllerError> newPath(const QString &stem) const;
    /// The undo step is "Import Direction Audio".
    void adopt(const QString &path, double durationSeconds, const model::LineId &id);
    [[nodiscard]] static QString failureText(const QString &description);
    void fail(const QString &description);
    /// The message includes the name of the user's file. A cancelled import needs no message.
    void failToImport(const QString &name, audio::AudioImporterError error);
    void failToImport(const QString &name, const QString &description);

    ProjectController &m_controller;
    int m_underWay = 0;
    QList<Import *> m_imports;
};

} // namespace orlenta::controller
