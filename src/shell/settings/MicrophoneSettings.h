#pragma once

namespace orlenta::shell {

/// The desktop's microphone settings.
class MicrophoneSettings final {
public:
    MicrophoneSettings() = delete;

    /// Opens the desktop's settings program. False if none is installed or it doesn't start.
    static bool open();
};

} // namespace orlenta::shell
