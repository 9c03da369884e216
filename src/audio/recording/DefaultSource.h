#pragma once

#include <chrono>

#include <QtCore/QByteArray>

#include "base/Result.h"

namespace orlenta::audio {

class SoundServer;

/// How long a change of the default is waited for.
inline constexpr std::chrono::milliseconds defaultSourceDeadline{500};

struct DefaultSourceFailure {
    /// Unanswered: the server may still do it.
    enum class Kind { Refused, Unanswered };

    Kind kind = Kind::Refused;
    /// libpulse's error code.
    int status = 0;
};

/// Makes the source of that name the system's default, and waits until the server tells so itself: one server says yes
/// a moment before it is true. Main thread; blocks for a few milliseconds, at most `defaultSourceDeadline`.
[[nodiscard]] base::Result<void, DefaultSourceFailure> setDefaultSource(SoundServer &server, const QByteArray &name);

} // namespace orlenta::audio
