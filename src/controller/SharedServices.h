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

/// The services that all open projects share. They outlive every session.
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
