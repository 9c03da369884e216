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

namespace orlenta::controller {

/// What all open projects of the process share. All of it outlives the sessions.
struct SharedServices {
    base::UserDefaults &defaults;
    speech::KeychainHelper &credentials;
    audio::SoundServer &sound;
    audio::AudioDeviceMonitor &devices;
    audio::OutputRoutingDiagnostics &routing;
    audio::AudioInputRouteManager &inputRoutes;
    audio::MicrophonePermission &microphone;
};

} // namespace orlenta::controller
