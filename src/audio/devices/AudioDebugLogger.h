#pragma once

#include <source_location>

#include <QtCore/QString>

namespace orlenta::audio {

class SoundServer;

/// The one diagnostic log of what audio code does to devices and streams. Any thread.
class AudioDebugLogger final {
public:
    AudioDebugLogger() = delete;

    static void log(const QString &message, const std::source_location &where = std::source_location::current());

    /// Whether this process may listen: "authorized" once the server shows an input, "notDetermined" without a server
    /// or without an input to ask for.
    [[nodiscard]] static QString microphoneAuthorizationDescription(const SoundServer &server);
};

} // namespace orlenta::audio
