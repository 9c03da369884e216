#pragma once

#include <cstdint>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

namespace orlenta::localvoices {

/// How to speak a line, with the service's scales and defaults.
struct SpeechSettings {
    /// 0 to 1; lower values widen the pitch range.
    double stability = 0.5;
    /// 0 to 1; higher values widen the pitch range.
    double style = 0.0;
    /// 0.25 to 4; 1 is the voice's normal pace.
    double speed = 1.0;
    /// Seeds the noise of breathy voices.
    std::uint32_t seed = 0;

    /// The pitch range relative to the voice's own, 0.5 to 2.
    [[nodiscard]] double melody() const;

    /// Applies a request's `voice_settings` and appends schema violations to `faults`.
    void readVoiceSettings(const QJsonObject &voiceSettings, QJsonArray &faults);
};

} // namespace orlenta::localvoices
