#pragma once

#include <qcoro/qcorotask.h>
#include <QtCore/QObject>

#include "controller/export/Exporting.h"

class QFileDialog;
class QWidget;

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

/// The export command of one window: has the audio prepared, asks where it goes, and has it copied there. Failures
/// reach the user through the controller's spotError. Main thread.
class ExportFlow final : public QObject {
    Q_OBJECT
public:
    ExportFlow(controller::ProjectController &controller, QWidget &window);

    /// From the command until the audio is where the user wanted it or a failure has been told.
    [[nodiscard]] bool isBusy() const { return m_isBusy; }
    /// Does nothing while an earlier export is busy.
    QCoro::Task<void> exportSelectedAudio(controller::MultiLineOutput output);

Q_SIGNALS:
    /// The audio is where the user wanted it, or a failure has been told.
    void finished();

private:
    void askForFile(const controller::Exporting::SingleFile &file);
    void askForFolder(const controller::Exporting::Folder &folder);
    void openDialog(QFileDialog *dialog);
    QCoro::Task<void> exportTo(controller::Exporting::SingleFile file, QString destination);
    QCoro::Task<void> exportToFolder(controller::Exporting::Folder folder, QString destination);
    void finish();

    controller::ProjectController &m_controller;
    QWidget &m_window;
    bool m_isBusy = false;
};

} // namespace orlenta::shell
