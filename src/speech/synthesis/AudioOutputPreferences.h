#pragma once

#include "base/UserDefaults.h"

namespace orlenta::speech {

enum class AudioFormat { Mp3, Wav };
/// In kilobits a second.
enum class MP3Quality { Kbps64 = 64, Kbps128 = 128, Kbps192 = 192 };
/// In bits a sample.
enum class WAVBitDepth { Bits16 = 16, Bits24 = 24 };
/// In hertz.
enum class WAVSampleRate { Hz44100 = 44100, Hz48000 = 48000 };

/// The format in which the user wants generated audio. Text in the defaults that is none of the known words counts as
/// the word that stands when nothing is stored.
struct AudioOutputPreferences {
    AudioFormat audioFormat = AudioFormat::Mp3;
    MP3Quality mp3Quality = MP3Quality::Kbps192;
    WAVBitDepth wavBitDepth = WAVBitDepth::Bits24;
    WAVSampleRate wavSampleRate = WAVSampleRate::Hz48000;

    [[nodiscard]] static AudioOutputPreferences read(const base::UserDefaults &defaults);

    friend bool operator==(const AudioOutputPreferences &, const AudioOutputPreferences &) = default;
};

} // namespace orlenta::speech
