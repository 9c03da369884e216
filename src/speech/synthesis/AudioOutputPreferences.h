#pragma once

#include "base/UserDefaults.h"

namespace orlenta::speech {

enum class AudioFormat { Mp3, Wav };
/// Kilobits per second.
enum class MP3Quality { Kbps64 = 64, Kbps128 = 128, Kbps192 = 192 };
/// Bits per sample.
enum class WAVBitDepth { Bits16 = 16, Bits24 = 24 };
/// Hertz.
enum class WAVSampleRate { Hz44100 = 44100, Hz48000 = 48000 };

/// The user's choice of format for generated audio. An unknown word in the defaults counts as the default.
struct AudioOutputPreferences {
    AudioFormat audioFormat = AudioFormat::Mp3;
    MP3Quality mp3Quality = MP3Quality::Kbps192;
    WAVBitDepth wavBitDepth = WAVBitDepth::Bits24;
    WAVSampleRate wavSampleRate = WAVSampleRate::Hz48000;

    [[nodiscard]] static AudioOutputPreferences read(const base::UserDefaults &defaults);

    friend bool operator==(const AudioOutputPreferences &, const AudioOutputPreferences &) = default;
};

} // namespace orlenta::speech
