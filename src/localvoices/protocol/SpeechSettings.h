#pragma once

#include <cstdint>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>

namespace orlenta::localvoices {

/// How a line is to be spoken, on the service's scales and with its defaults.
struct SpeechSettings {
    /// 0 to 1: the less, the wider the melody.
    double stability = 0.5;
    /// 0 to 1: widens the melody too.
    double style = 0.0;
    /// 0.25 to 4, 1 for the voice's own pace.
    double speed = 1.0;
    /// Where the noise of breathy voices begins.
    std::uint32_t seed = 0;

    /// The melody's width beside the voice's own, 0.5 to 2.
    [[nodiscard]] double melody() const;

    /// Takes over what a request's `voice_settings` hold, and adds what breaks the schema to `faults`.
    void readVoiceSettings(const QJsonObject &voiceSettings, QJsonArray &faults);
};

} // namespace orlenta::localvoices
