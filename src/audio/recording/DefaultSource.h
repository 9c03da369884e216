#pragma once

#include <chrono>

#include <QtCore/QByteArray>

#include "base/Result.h"

namespace orlenta::audio {

class SoundServer;

/// How long to wait for a change of the default.
inline constexpr std::chrono::milliseconds defaultSourceDeadline{500};

struct DefaultSourceFailure {
    /// Unanswered: the server may still make the change.
    enum class Kind { Refused, Unanswered };

    Kind kind = Kind::Refused;
    /// libpulse's error code.
    int status = 0;
};

/// Makes a source the system's default and waits until the server reports it as such: PipeWire acknowledges the change
/// slightly before it takes effect. Main thread; blocks for a few milliseconds, at most `defaultSourceDeadline`.
[[nodiscard]] base::Result<void, DefaultSourceFailure> setDefaultSource(SoundServer &server, const QByteArray &name);

} // namespace orlenta::audio
