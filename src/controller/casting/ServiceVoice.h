#pragma once

#include <QtCore/QString>

namespace orlenta::controller {

/// The part of a speech service's voice that casting needs.
struct ServiceVoice {
    QString elevenLabsVoiceId;
    QString name;

    friend bool operator==(const ServiceVoice &, const ServiceVoice &) = default;
};

} // namespace orlenta::controller
