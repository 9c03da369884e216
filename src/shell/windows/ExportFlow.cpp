#include "shell/windows/ExportFlow.h"

#include <QtCore/QPointer>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>

#include "controller/ProjectController.h"
#include "controller/ProjectSession.h"
#include "shell/controls/RememberedFolder.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

using controller::Exporting;

ExportFlow::ExportFlow(controller::ProjectSession &session, QWidget &window)
    : QObject(&window), m_controller(session.controller()), m_defaults(session.services().defaults), m_window(window) {}

QCoro::Task<void> ExportFlow::exportSelectedAudio(controller::MultiLineOutput output) {
    if (m_isBusy)
        co_return;
    m_isBusy = true;
    const QPointer<ExportFlow> self(this);
    const Exporting::Plan plan = co_await m_controller.exporting().plan(output);
    if (!self)
        co_return;
    if (const auto *file = std::get_if<Exporting::SingleFile>(&plan); file != nullptr)
        askForFile(*file);
    else if (const auto *folder = std::get_if<Exporting::Folder>(&plan); folder != nullptr)
        askForFolder(*folder);
    else
        m_isBusy = false;
}

void ExportFlow::askForFile(const Exporting::SingleFile &file) {
    auto *dialog = new QFileDialog(&m_window, Exporting::dialogTitle());
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(u"WAV audio (*.wav)"_s);
    dialog->setDefaultSuffix(u"wav"_s);
    rememberFolder(*dialog, m_defaults, base::DialogFolder::Export);
    dialog->selectFile(file.suggestedName);
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, file](const QString &destination) { exportTo(file, destination); });
    openDialog(dialog);
}

void ExportFlow::askForFolder(const Exporting::Folder &folder) {
    auto *dialog = new QFileDialog(&m_window, Exporting::dialogTitle());
    dialog->setFileMode(QFileDialog::Directory);
    dialog->setOption(QFileDialog::ShowDirsOnly);
    dialog->setLabelText(QFileDialog::Accept, u"Export"_s);
    // The file dialog has no place for a message, so show it as the label of the folder field.
    dialog->setLabelText(QFileDialog::FileName, Exporting::folderMessage(folder));
    rememberFolder(*dialog, m_defaults, base::DialogFolder::Export);
    connect(dialog, &QFileDialog::fileSelected, this,
            [this, folder](const QString &destination) { exportToFolder(folder, destination); });
    openDialog(dialog);
}

void ExportFlow::openDialog(QFileDialog *dialog) {
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::rejected, this, [this] { m_isBusy = false; });
    dialog->open();
}

QCoro::Task<void> ExportFlow::exportTo(Exporting::SingleFile file, QString destination) {
    const QPointer<ExportFlow> self(this);
    co_await m_controller.exporting().exportTo(file, destination);
    if (self)
        finish();
}

QCoro::Task<void> ExportFlow::exportToFolder(Exporting::Folder folder, QString destination) {
    const QPointer<ExportFlow> self(this);
    co_await m_controller.exporting().exportToFolder(folder, destination);
    if (self)
        finish();
}

void ExportFlow::finish() {
    m_isBusy = false;
    Q_EMIT finished();
}

} // namespace orlenta::shell
