#pragma once

#include <source_location>

#include <QtCore/QString>

#include "audio/devices/MicrophoneAuthorization.h"

namespace orlenta::audio {

/// The one diagnostic log of what audio code does to devices and streams. Any thread.
class AudioDebugLogger final {
public:
    AudioDebugLogger() = delete;

    static void log(const QString &message, const std::source_location &where = std::source_location::current());

    /// The state in the log's words, "authorized" say. Notes that it was asked for.
    [[nodiscard]] static QString microphoneAuthorizationDescription(MicrophoneAuthorization authorization);
};

} // namespace orlenta::audio
