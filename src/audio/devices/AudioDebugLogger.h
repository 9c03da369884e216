#pragma once

#include <source_location>

#include <QtCore/QString>

#include "audio/devices/MicrophoneAuthorization.h"

namespace orlenta::audio {

/// The diagnostic log for everything audio code does with devices, streams and files. Any thread.
class AudioDebugLogger final {
public:
    AudioDebugLogger() = delete;

    static void log(const QString &message, const std::source_location &where = std::source_location::current());

    /// Returns the state as logged, for example "authorized". Logs the query itself.
    [[nodiscard]] static QString microphoneAuthorizationDescription(MicrophoneAuthorization authorization);
};

} // namespace orlenta::audio
