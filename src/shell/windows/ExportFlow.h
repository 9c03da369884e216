#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>

#include "controller/export/Exporting.h"

class QFileDialog;
class QWidget;

namespace orlenta::base {
class UserDefaults;
}
namespace orlenta::controller {
class ProjectController;
class ProjectSession;
} // namespace orlenta::controller

namespace orlenta::shell {

/// Runs a window's export: prepares the audio, asks for the destination and copies it there. Starts
/// where the last export went. Main thread.
class ExportFlow final : public QObject {
    Q_OBJECT
public:
    ExportFlow(controller::ProjectSession &session, QWidget &window);

    /// True from the command until the export has finished or failed, or the user cancels.
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    /// Does nothing while an export is running.
    QCoro::Task<void> exportSelectedAudio(controller::MultiLineOutput output);

Q_SIGNALS:
    /// The export has finished or failed.
    void finished();

private:
    void askForFile(const controller::Exporting::SingleFile &file);
    void askForFolder(const controller::Exporting::Folder &folder);
    void openDialog(QFileDialog *dialog);
    QCoro::Task<void> exportTo(controller::Exporting::SingleFile file, QString destination);
    QCoro::Task<void> exportToFolder(controller::Exporting::Folder folder, QString destination);
    void finish();

    controller::ProjectController &m_controller;
    base::UserDefaults &m_defaults;
    QWidget &m_window;
    bool m_isBusy = false;
};

} // namespace orlenta::shell
