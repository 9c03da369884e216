#pragma once

#include <QtCore/QString>

namespace orlenta::controller {

/// A voice of the speech service, as far as casting needs it.
struct ServiceVoice {
    QString elevenLabsVoiceId;
    QString name;

    friend bool operator==(const ServiceVoice &, const ServiceVoice &) = default;
};

} // namespace orlenta::controller
