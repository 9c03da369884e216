#pragma once

namespace orlenta::audio {
class AudioDeviceMonitor;
class AudioInputRouteManager;
class MicrophonePermission;
class OutputRoutingDiagnostics;
class SoundServer;
} // namespace orlenta::audio

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::speech {
class KeychainHelper;
}

namespace orlenta::shell {

class AppCommands;
class LocalVoices;

/// What every window of the process shares. All of it outlives the windows.
struct AppContext {
    base::UserDefaults &defaults;
    speech::KeychainHelper &credentials;
    LocalVoices &localVoices;
    audio::SoundServer &sound;
    audio::AudioDeviceMonitor &devices;
    audio::OutputRoutingDiagnostics &routing;
    audio::AudioInputRouteManager &inputRoutes;
    audio::MicrophonePermission &microphone;
    AppCommands &commands;
};

} // namespace orlenta::shell
