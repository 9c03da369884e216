#pragma once

namespace orlenta::speech {

/// Voice settings for every model except eleven_v3.
struct VoiceSettings {
    /// 0 to 1.
    double stability = 0.5;
    /// 0 to 1.
    double similarityBoost = 0.75;
    /// 0 to 1.
    double style = 0.0;
    /// 0.7 to 1.2; 1 is the voice's normal speed.
    double speed = 1.0;

    friend bool operator==(const VoiceSettings &, const VoiceSettings &) = default;
};

/// Voice settings for eleven_v3, which has no speed setting.
struct V3VoiceSettings {
    double stability = 0.5;
    double similarityBoost = 0.75;
    double style = 0.0;

    friend bool operator==(const V3VoiceSettings &, const V3VoiceSettings &) = default;
};

} // namespace orlenta::speech
