#include "audio/playback/RoutedAudioPlayerError.h"

#include <pulse/def.h>

namespace orlenta::audio {

RoutedAudioPlayerError RoutedAudioPlayerError::fileUnreadable(const QString &description) {
    return {Kind::FileUnreadable, 0, 0, description};
}

RoutedAudioPlayerError RoutedAudioPlayerError::soundServerUnavailable(const QString &reason) {
    return {Kind::SoundServerUnavailable, 0, 0, reason};
}

bool RoutedAudioPlayerError::isOutputGone() const {
    return kind == Kind::AudioUnitSetPropertyFailed && status == PA_ERR_NOENTITY;
}

bool RoutedAudioPlayerError::concernsRouting() const {
    return kind != Kind::FileUnreadable && kind != Kind::RecordingRuns;
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
    case Kind::ServerSilent:
        return QStringLiteral("The sound server has stopped responding.");
    case Kind::OutputStalled:
        return QStringLiteral("The sound output has stopped responding.");
    case Kind::PlaybackEnded:
        return QStringLiteral("The sound server ended the playback.");
    case Kind::RecordingRuns:
        return QStringLiteral("Playback isn't possible during a recording.");
    }
    Q_UNREACHABLE();
}

} // namespace orlenta::audio
