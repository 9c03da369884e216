#include "shell/application/OrlentaApp.h"

#include <algorithm>

#include <QtCore/QFileInfo>
#include <QtGui/QDesktopServices>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QPushButton>

#include "audio/recording/LeftoverRecordings.h"
#include "base/CrashReport.h"
#include "base/files/PrivateFolders.h"
#include "base/LogCategories.h"
#include "controller/takes/TemporarySweep.h"
#include "shell/application/SampleProject.h"
#include "shell/controls/ControlAccessibility.h"
#include "shell/controls/MessageBox.h"
#include "shell/controls/RememberedFolder.h"
#include "shell/settings/MicrophoneSettings.h"
#include "shell/settings/SettingsDialog.h"
#include "shell/theme/Theme.h"
#include "shell/windows/NewProjectDialog.h"
#include "shell/windows/ProjectWindow.h"
#include "shell/windows/WelcomeWindow.h"
#include "speech/LocalVoicesProcess.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr double scaleStep = 0.1;
constexpr double smallestScale = 0.8;
constexpr double largestScale = 1.5;

} // namespace

OrlentaApp::OrlentaApp()
    : m_localVoices(m_defaults, std::make_unique<speech::LocalVoicesProcess>()), m_devices(m_sound, m_defaults),
      m_inputRoutes(m_sound, m_defaults),
      m_microphone(m_sound), m_context{{m_defaults, m_credentials, m_sound, m_devices, m_routing, m_inputRoutes,
                                        m_microphone},
                                       m_localVoices,
                                       m_commands},
      m_windows(m_context) {
    QApplication::setQuitOnLastWindowClosed(false);
    installControlAccessibility();
    connectCommands();
    connect(&m_credentials, &speech::KeychainHelper::breadcrumb, this,
            [](const QString &message, const QVariantMap &data) {
                base::CrashReport::addBreadcrumb(u"keychain"_s, base::CrashReport::Level::Error, message, data);
            });
    connect(&m_windows, &ProjectWindows::projectOpened, this, [this] {
        if (m_welcome)
            m_welcome->hide();
    });
    connect(&m_windows, &ProjectWindows::allClosed, this, [this] {
        if (!m_isResolvingTermination)
            showWelcome();
    });
}

OrlentaApp::~OrlentaApp() {
    // These may have no parent window that would delete them.
    delete m_leftovers;
    delete m_settings;
    delete m_newProject;
    m_localVoices.shutDown();
}

void OrlentaApp::start(const QStringList &projects) {
    controller::sweepTemporaryFiles(std::chrono::system_clock::now());
    Theme::apply(Theme::appearanceFromText(m_defaults.appearance()));
    Theme::setUiScale(m_defaults.uiScale());
    // After a crash during a take, the desktop may still use the take's microphone. If the user's own isn't listed yet,
    // or is unplugged, the next refresh of the device list restores it.
    m_inputRoutes.restorePendingDefaultInputIfNeeded(u"application start"_s);
    m_inputRoutes.followRefreshes(m_devices);
    m_localVoices.restoreChoice();
    for (const QString &project : projects)
        m_windows.openProject(project);
    if (m_windows.isEmpty())
        showWelcome();
    reportLeftoverRecordings();
}

void OrlentaApp::reportLeftoverRecordings() {
    const QString folder = base::PrivateFolders::caches();
    const qsizetype count = audio::LeftoverRecordings::find(folder, std::chrono::system_clock::now()).size();
    if (count == 0)
        return;
    const QString title = u"Leftover recordings"_s;
    const QString text = count == 1 ? u"1 recording isn't attached to any line."_s
                                    : QStringLiteral("%1 recordings aren't attached to any line.").arg(count);
    m_leftovers = new MessageBox(QMessageBox::Information);
    m_leftovers->setWindowTitle(title);
    m_leftovers->setModal(false);
    m_leftovers->setMessage(text, QStringLiteral("Leftover recordings stay in %1 until you delete them. To attach one "
                                                 "to a line, use Import Direction Audio.")
                                      .arg(folder));
    m_leftovers->setAccessibleName(title);
    m_leftovers->addButton(QMessageBox::Ok)->setToolTip(u"Leave them where they are"_s);
    QPushButton *show = m_leftovers->addButton(u"Show in Folder"_s, QMessageBox::ActionRole);
    show->setToolTip(u"Open the folder in the file manager"_s);
    connect(show, &QPushButton::clicked, this, [this, folder] {
        if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
            showFailure(u"The folder couldn't be opened."_s, folder);
    });
    m_leftovers->show();
    m_leftovers->raise();
}

void OrlentaApp::connectCommands() {
    connect(&m_commands, &AppCommands::newProject, this, &OrlentaApp::openNewProjectDialog);
    connect(&m_commands, &AppCommands::openProject, this, &OrlentaApp::openProjectPanel);
    connect(&m_commands, &AppCommands::openSampleProject, this, &OrlentaApp::openSampleProject);
    connect(&m_commands, &AppCommands::openSettings, this, &OrlentaApp::openSettings);
    connect(&m_commands, &AppCommands::openMicrophoneSettings, this, &OrlentaApp::openMicrophoneSettings);
    connect(&m_commands, &AppCommands::openAbout, this, &OrlentaApp::openAbout);
    connect(&m_commands, &AppCommands::quit, this, &OrlentaApp::requestQuit);
    connect(&m_commands, &AppCommands::zoomIn, this, [this] { setUiScale(m_defaults.uiScale() + scaleStep); });
    connect(&m_commands, &AppCommands::zoomOut, this, [this] { setUiScale(m_defaults.uiScale() - scaleStep); });
    connect(&m_commands, &AppCommands::actualSize, this, [this] { setUiScale(1.0); });
}

void OrlentaApp::setUiScale(double scale) {
    m_defaults.setUiScale(std::clamp(scale, smallestScale, largestScale));
    Theme::setUiScale(m_defaults.uiScale());
}

QWidget *OrlentaApp::dialogParent() const {
    QWidget *active = QApplication::activeWindow();
    return active != nullptr ? active : m_welcome.get();
}

void OrlentaApp::showWelcome() {
    if (!m_welcome) {
        m_welcome = std::make_unique<WelcomeWindow>(m_commands);
        connect(m_welcome.get(), &WelcomeWindow::dismissed, this, [this] {
            if (m_windows.isEmpty())
                requestQuit();
        });
    }
    m_welcome->show();
    m_welcome->raise();
    m_welcome->activateWindow();
}

void OrlentaApp::openNewProjectDialog() {
    if (m_newProject) {
        m_newProject->raise();
        m_newProject->activateWindow();
        return;
    }
    const bool welcomeIsUp = m_welcome && m_welcome->isVisible();
    m_newProject = new NewProjectDialog(
        [this](const QString &folder, const QString &name) { return m_windows.createAndOpenProject(folder, name); },
        welcomeIsUp ? m_welcome.get() : nullptr);
    m_newProject->setAttribute(Qt::WA_DeleteOnClose);
    if (welcomeIsUp)
        m_newProject->open();
    else
        m_newProject->show();
}

void OrlentaApp::openProjectPanel() {
    auto *panel = new QFileDialog(dialogParent(), u"Open Orlenta Project"_s);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setFileMode(QFileDialog::ExistingFile);
    panel->setNameFilters({u"Orlenta projects (*.orl *.orl.json project.json)"_s, u"All files (*)"_s});
    panel->setLabelText(QFileDialog::Accept, u"Open"_s);
    panel->setLabelText(QFileDialog::FileName, u"Select a project folder or .orl file"_s);
    rememberFolder(*panel, m_defaults, base::DialogFolder::Open);
    // Open the project once the panel has closed, so that alerts don't appear behind it.
    connect(panel, &QFileDialog::fileSelected, this, [this](const QString &path) {
        qCInfo(base::log::project).noquote() << "[ProjectWindowController] Open panel selected:" << path;
        QMetaObject::invokeMethod(
            this, [this, path] { m_windows.openProject(path); }, Qt::QueuedConnection);
    });
    panel->open();
}

void OrlentaApp::openSampleProject() {
    const QString destination = SampleProject::defaultDestination();
    if (!QFileInfo::exists(destination)) {
        const auto shipped = SampleProject::shippedFolder();
        if (!shipped) {
            showFailure(u"The sample project isn't installed."_s, {});
            return;
        }
        if (const auto copied = SampleProject::copy(*shipped, destination); !copied) {
            showFailure(u"The sample project couldn't be copied."_s, copied.error().description());
            return;
        }
    }
    m_windows.openProject(destination);
}

void OrlentaApp::openSettings() {
    if (!m_settings) {
        m_settings = new SettingsDialog(m_context);
        m_settings->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settings->show();
    m_settings->raise();
    m_settings->activateWindow();
}

void OrlentaApp::openMicrophoneSettings() {
    if (!MicrophoneSettings::open())
        openSettings();
}

void OrlentaApp::openAbout() {
    auto *box = new MessageBox(QMessageBox::NoIcon, dialogParent());
    box->setWindowTitle(u"About Orlenta"_s);
    box->addButton(QMessageBox::Ok);
    box->setMessage(QStringLiteral("Orlenta %1").arg(QApplication::applicationVersion()),
                    u"Cast, direct and generate speech for audio post-production.\n\nFree software under the GNU "
                    "General Public License, version 3 or later."_s);
    box->open();
}

void OrlentaApp::requestQuit() {
    if (m_isResolvingTermination)
        return;
    m_isResolvingTermination = true;
    m_windows.resolveUnsavedProjects([this](ProjectWindowController::CloseOutcome outcome) {
        // Once the user has decided, closing the windows must not ask again.
        m_isResolvingTermination = outcome == ProjectWindowController::CloseOutcome::Proceed;
        if (!m_isResolvingTermination)
            return;
        m_localVoices.shutDown();
        QApplication::quit();
        // A window that has unsaved changes again keeps the application running.
        m_isResolvingTermination = m_windows.isEmpty();
    });
}

void OrlentaApp::showFailure(const QString &title, const QString &detail) {
    auto *box = new MessageBox(QMessageBox::Warning, dialogParent());
    box->addButton(QMessageBox::Ok);
    box->setMessage(title, detail);
    box->open();
}

} // namespace orlenta::shell
