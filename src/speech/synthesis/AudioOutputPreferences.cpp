#include "speech/synthesis/AudioOutputPreferences.h"

namespace orlenta::speech {

AudioOutputPreferences AudioOutputPreferences::read(const base::UserDefaults &defaults) {
    AudioOutputPreferences preferences;
    if (defaults.audioFormat() == QLatin1String("wav"))
        preferences.audioFormat = AudioFormat::Wav;
    if (const QString quality = defaults.mp3Quality(); quality == QLatin1String("64"))
        preferences.mp3Quality = MP3Quality::Kbps64;
    else if (quality == QLatin1String("128"))
        preferences.mp3Quality = MP3Quality::Kbps128;
    if (defaults.wavBitDepth() == QLatin1String("16"))
        preferences.wavBitDepth = WAVBitDepth::Bits16;
    if (defaults.wavSampleRate() == QLatin1String("44100"))
        preferences.wavSampleRate = WAVSampleRate::Hz44100;
    return preferences;
}

} // namespace orlenta::speech
