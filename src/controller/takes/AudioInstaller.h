#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>

#include "base/Result.h"
#include "controller/document/ProjectControllerError.h"
#include "controller/takes/AudioKind.h"

namespace orlenta::controller {

class ProjectController;

/// Brings finished audio files into the project's folder, off the main thread, so that no disk holds up the window.
/// Main thread.
class AudioInstaller final : public QObject {
    Q_OBJECT
public:
    using Outcome = base::Result<QString, ProjectControllerError>;

    explicit AudioInstaller(ProjectController &controller) : m_controller(controller) {}

    /// Stores the file in the folder of its kind under that name, or the next free one like it, flushed to disk, and
    /// returns its path. A file of the application's own in the caches folder is moved; any other stays where it is.
    /// A file that lies there already, or any where the project has no folder, is left as it is. If the project gets
    /// another folder meanwhile, the file follows it. The caller looks whether the controller still lives.
    QCoro::Task<Outcome> install(QString path, QString name, AudioKind kind);
    /// A file is on its way.
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
