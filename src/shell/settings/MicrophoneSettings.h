#pragma once

namespace orlenta::shell {

/// The desktop's page where the user allows and chooses microphones.
class MicrophoneSettings final {
public:
    MicrophoneSettings() = delete;

    /// Starts the desktop's own program for it. False when none is installed, or it won't start.
    static bool open();
};

} // namespace orlenta::shell
