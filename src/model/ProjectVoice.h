#pragma once

#include <QtCore/QString>

#include "model/Ids.h"

namespace orlenta::model {

/// The stripe colour of a voice whose record has none.
[[nodiscard]] QString defaultStripeColor();

/// A voice cast in the project. Lines and takes refer to its id; casting compares the service's voice id.
struct ProjectVoice {
    VoiceId id;
    QString elevenLabsVoiceId;
    QString displayName;
    QString castName;
    /// "#RRGGBB", upper-case.
    QString colorStripeHex;

    friend bool operator==(const ProjectVoice &, const ProjectVoice &) = default;
};

} // namespace orlenta::model
