#pragma once

#include <memory>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>

#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "audio/devices/SoundServer.h"
#include "audio/recording/AudioInputRouteManager.h"
#include "audio/recording/MicrophonePermission.h"
#include "base/UserDefaults.h"
#include "shell/application/AppCommands.h"
#include "shell/application/AppContext.h"
#include "shell/windows/ProjectWindows.h"
#include "speech/account/KeychainHelper.h"
#include "speech/LocalVoices.h"

class QMessageBox;

namespace orlenta::shell {

class NewProjectDialog;
class SettingsDialog;
class WelcomeWindow;

/// The whole application: it owns what the windows share and the windows themselves, and carries out the commands that
/// belong to no project. Main thread; made after the QApplication and gone before it.
class OrlentaApp final : public QObject {
    Q_OBJECT
public:
    OrlentaApp();
    ~OrlentaApp() override;

    /// Applies the preferences, and opens the named projects or else the welcome window.
    void start(const QStringList &projects);

    [[nodiscard]] base::UserDefaults &defaults() { return m_defaults; }
    [[nodiscard]] speech::LocalVoices &localVoices() { return m_localVoices; }
    [[nodiscard]] ProjectWindows &windows() { return m_windows; }

    void openNewProjectDialog();
    void openProjectPanel();
    /// Opens the user's copy of the sample project, making it first where there is none.
    void openSampleProject();
    void openSettings();
    /// The desktop's own page where it has one, or else the application's settings, which tell how it stands.
    void openMicrophoneSettings();
    void openAbout();
    /// Asks about unsaved projects, then ends the event loop.
    void requestQuit();

private:
    void connectCommands();
    void showWelcome();
    void setUiScale(double scale);
    void tellOfLeftoverRecordings();
    void showFailure(const QString &title, const QString &detail);
    [[nodiscard]] QWidget *dialogParent() const;

    base::UserDefaults m_defaults;
    speech::KeychainHelper m_credentials;
    speech::LocalVoices m_localVoices;
    audio::SoundServer m_sound;
    audio::AudioDeviceMonitor m_devices;
    audio::OutputRoutingDiagnostics m_routing;
    audio::AudioInputRouteManager m_inputRoutes;
    audio::MicrophonePermission m_microphone;
    AppCommands m_commands;
    AppContext m_context;
    ProjectWindows m_windows;
    std::unique_ptr<WelcomeWindow> m_welcome;
    QPointer<SettingsDialog> m_settings;
    QPointer<NewProjectDialog> m_newProject;
    QPointer<QMessageBox> m_leftovers;
    bool m_isResolvingTermination = false;
};

} // namespace orlenta::shell
