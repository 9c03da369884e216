#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>

#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/takes/AudioKind.h"

namespace orlenta::controller {

class ProjectController;

/// Moves or copies finished audio files into the project folder, off the main thread. Main thread.
class AudioInstaller final : public QObject {
    Q_OBJECT
public:
    using Outcome = base::Result<QString, ProjectControllerError>;

    explicit AudioInstaller(ProjectController &controller) : m_controller(controller) {}

    /// Stores the file in its kind's folder under `name`, or the next free name, flushed to disk, and returns the new
    /// path. A file in the caches folder is moved; any other is copied. A file that is already in place isn't touched,
    /// nor is any file while the project has no folder. If the project's folder changes meanwhile, the file is stored
    /// again in the new one. The caller must check whether the controller still exists.
    QCoro::Task<Outcome> install(QString path, QString name, AudioKind kind);
    /// A file is being stored.
    [[nodiscard]] bool isBusy() const { return m_running > 0; }

Q_SIGNALS:
    void isBusyChanged();

private:
    void begin();
    void end();

    ProjectController &m_controller;
    int m_running = 0;
};

} // namespace orlenta::controller
