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

namespace orlenta::shell {

class MessageBox;
class NewProjectDialog;
class SettingsDialog;
class WelcomeWindow;

/// The application. Owns the windows and everything they share, and carries out the application-wide commands. Main
/// thread. Create it after the QApplication and destroy it before.
class OrlentaApp final : public QObject {
    Q_OBJECT
public:
    OrlentaApp();
    ~OrlentaApp() override;

    /// Applies the preferences and opens the given projects, or the welcome window if there are none.
    void start(const QStringList &projects);

    [[nodiscard]] base::UserDefaults &defaults() { return m_defaults; }
    [[nodiscard]] speech::LocalVoices &localVoices() { return m_localVoices; }
    [[nodiscard]] ProjectWindows &windows() { return m_windows; }

    void openNewProjectDialog();
    void openProjectPanel();
    /// Opens the user's copy of the sample project. Creates the copy if there is none yet.
    void openSampleProject();
    void openSettings();
    /// Opens the desktop's microphone settings. If there are none, opens the application's settings, which show the
    /// permission.
    void openMicrophoneSettings();
    void openAbout();
    /// Asks about unsaved projects, then quits the event loop.
    void requestQuit();

private:
    void connectCommands();
    void showWelcome();
    void setUiScale(double scale);
    void reportLeftoverRecordings();
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
    QPointer<MessageBox> m_leftovers;
    bool m_isResolvingTermination = false;
};

} // namespace orlenta::shell
