#include "audio/playback/RoutedAudioPlayerError.h"

namespace orlenta::audio {

RoutedAudioPlayerError RoutedAudioPlayerError::fileUnreadable(const QString &description) {
    return {Kind::FileUnreadable, 0, 0, description};
}

RoutedAudioPlayerError RoutedAudioPlayerError::soundServerUnavailable(const QString &reason) {
    return {Kind::SoundServerUnavailable, 0, 0, reason};
}

QString RoutedAudioPlayerError::description() const {
    switch (kind) {
    case Kind::OutputDeviceBindingFailed:
        return QStringLiteral("Could not bind output device %1: %2").arg(deviceID).arg(underlying);
    case Kind::AudioUnitSetPropertyFailed:
        return QStringLiteral("Could not bind output device %1 with AudioUnitSetProperty. OSStatus: %2")
            .arg(deviceID)
            .arg(status);
    case Kind::NoFileLoaded:
        return QStringLiteral("No audio file is loaded.");
    case Kind::OutputAudioUnitUnavailable:
        return QStringLiteral("The output audio unit is unavailable.");
    case Kind::NoFramesRemaining:
        return QStringLiteral("No audio frames remain to play.");
    case Kind::FileUnreadable:
        return underlying;
    case Kind::SoundServerUnavailable:
        return underlying.isEmpty() ? QStringLiteral("The sound server is not available.")
                                    : QStringLiteral("The sound server is not available: %1").arg(underlying);
    case Kind::NoOutput:
        return QStringLiteral("There is no sound output to play through.");
    }
    Q_UNREACHABLE();
}

} // namespace orlenta::audio
