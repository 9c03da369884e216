#pragma once

#include <functional>
#include <memory>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtGui/QKeySequence>

#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "audio/devices/SoundServer.h"
#include "audio/recording/AudioInputRouteManager.h"
#include "audio/recording/MicrophonePermission.h"
#include "base/UserDefaults.h"
#include "controller/commands/Command.h"
#include "controller/ProjectSession.h"
#include "model/ProjectStore.h"
#include "shell/application/AppCommands.h"
#include "shell/application/AppContext.h"
#include "speech/account/KeychainHelper.h"
#include "speech/LocalVoices.h"

class QAbstractButton;
class QWidget;

namespace orlenta::testing {

/// The services that windows share, with their own folder, preferences and local voices program, but no keyring. Has no
/// sound server unless one is given.
class ShellSession final {
public:
    ShellSession();
    explicit ShellSession(const QString &localVoicesProgram, const QString &soundServer = {});

    /// Starts the program and waits until it answers.
    [[nodiscard]] bool startLocalVoices();
    /// Stores a project with these lines in one tab. A line "Voice: text" is cast to that local voice.
    [[nodiscard]] model::StoredProject makeProject(const QString &name, const QStringList &lines);
    /// Stores the project in its own folder.
    [[nodiscard]] model::StoredProject store(const QString &name, model::Project project);
    /// Opens the stored project with a speech service that doesn't answer: generating fails at once, and nothing leaves
    /// this machine.
    [[nodiscard]] std::unique_ptr<controller::ProjectSession> openOffline(const model::StoredProject &stored);
    [[nodiscard]] QString path(const QString &name) const { return m_folder.filePath(name); }

private:
    QTemporaryDir m_folder;

public:
    base::UserDefaults defaults;
    speech::KeychainHelper credentials;
    speech::LocalVoices localVoices;
    audio::SoundServer sound;
    audio::AudioDeviceMonitor devices;
    audio::OutputRoutingDiagnostics routing;
    audio::AudioInputRouteManager inputRoutes;
    audio::MicrophonePermission microphone;
    shell::AppCommands commands;
    shell::AppContext context;
};

/// Presses a key at the focus, where menu commands see it first.
void press(const QKeySequence &key);
/// Presses the command's first key.
void pressKeyOf(controller::CommandId command);
/// Stands in for the desktop's file manager: receives the files and folders that would be opened in it.
class FileManager final : public QObject {
    Q_OBJECT
public:
    FileManager();
    ~FileManager() override;
    QList<QUrl> shown;

public Q_SLOTS:
    void open(const QUrl &url) { shown.append(url); }
};

/// Runs the event loop until the condition holds. False after a minute.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition);
/// The visible button with that text, or null.
[[nodiscard]] QAbstractButton *buttonNamed(const QWidget &parent, const QString &text);
/// The controls of a window without an accessible name or tooltip, as "class text".
[[nodiscard]] QStringList unnamedControls(const QWidget &window);
/// The clipped texts of a window.
[[nodiscard]] QStringList clippedTexts(const QWidget &window);

} // namespace orlenta::testing
