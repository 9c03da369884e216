#pragma once

#include <QtCore/QString>

namespace orlenta::model {

/// A copy of a cast voice, so that the preset works in a project that lacks the voice.
struct ProjectPresetVoice {
    /// Never empty.
    QString elevenLabsVoiceId;
    QString displayName;
    QString castName;
    /// "#RRGGBB", upper-case.
    QString colorStripeHex;

    friend bool operator==(const ProjectPresetVoice &, const ProjectPresetVoice &) = default;
};

} // namespace orlenta::model
