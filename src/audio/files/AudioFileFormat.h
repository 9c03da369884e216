#pragma once

namespace orlenta::audio {

/// What a file says about the audio in it.
struct AudioFileFormat {
    enum class Coding {
        LinearPCM,
        Compressed,
    };
    enum class Container {
        /// WAV and what only differs from it in its header (extensible, RF64).
        Wav,
        Other,
    };

    /// Frames a second, 1000 to 768000.
    double sampleRate = 0.0;
    /// 1 to 256.
    int channelCount = 0;
    Coding coding = Coding::LinearPCM;
    /// Bits of one stored sample: 8, 16, 24, 32 or 64 (the last two may be floating point); 0 where compressed.
    int bitDepth = 0;
    Container container = Container::Wav;

    friend bool operator==(const AudioFileFormat &, const AudioFileFormat &) = default;
};

/// Whether a rate and a channel count lie within the ranges above. A file outside of them is refused: a header that
/// says "one frame a second" would turn a small file into hours of converted audio.
[[nodiscard]] constexpr bool isUsableFormat(double sampleRate, int channelCount) {
    return sampleRate >= 1000.0 && sampleRate <= 768000.0 && channelCount >= 1 && channelCount <= 256;
}

} // namespace orlenta::audio
