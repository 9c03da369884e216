#pragma once

#include <functional>
#include <memory>

#include <QtCore/QTemporaryDir>

#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "audio/devices/SoundServer.h"
#include "audio/recording/AudioInputRouteManager.h"
#include "audio/recording/MicrophonePermission.h"
#include "base/UserDefaults.h"
#include "controller/ProjectSession.h"
#include "model/ProjectStore.h"
#include "shell/application/AppCommands.h"
#include "shell/application/AppContext.h"
#include "speech/account/KeychainHelper.h"
#include "speech/LocalVoices.h"

class QAbstractButton;
class QWidget;

namespace orlenta::testing {

/// What the windows of one process share, with a folder, preferences and a local voices program of its own, and
/// without a keyring. There is no sound server unless one is named.
class ShellSession final {
public:
    ShellSession();
    explicit ShellSession(const QString &localVoicesProgram, const QString &soundServer = {});

    /// Starts the program and waits until it answers.
    [[nodiscard]] bool startLocalVoices();
    /// A project on disk with the lines given, all in one tab. A line "Voice: text" is cast to that local voice.
    [[nodiscard]] model::StoredProject makeProject(const QString &name, const QStringList &lines);
    /// The project in a folder of its own.
    [[nodiscard]] model::StoredProject store(const QString &name, model::Project project);
    /// The stored project as an open one whose speech service nobody answers for: a generation fails at once, and
    /// nothing leaves this machine.
    [[nodiscard]] std::unique_ptr<controller::ProjectSession> openUnheard(const model::StoredProject &stored);
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

/// Runs the event loop until the condition holds; false when it doesn't within a minute.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition);
/// The visible button of that text, or null.
[[nodiscard]] QAbstractButton *buttonNamed(const QWidget &parent, const QString &text);
/// The controls of a window that have no accessible name or no tooltip, as "class text".
[[nodiscard]] QStringList unnamedControls(const QWidget &window);
/// The texts of a window that don't fit where they stand.
[[nodiscard]] QStringList clippedTexts(const QWidget &window);

} // namespace orlenta::testing
