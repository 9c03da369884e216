#pragma once

namespace orlenta::audio {

/// A file's audio format.
struct AudioFileFormat {
    enum class Coding {
        LinearPCM,
        Compressed,
    };
    enum class Container {
        /// WAV, including the extensible and RF64 variants.
        Wav,
        Other,
    };

    /// Hz, 1000 to 768000.
    double sampleRate = 0.0;
    /// 1 to 256.
    int channelCount = 0;
    Coding coding = Coding::LinearPCM;
    /// Bits per stored sample: 8, 16, 24, 32 or 64 (32 and 64 may be floating point); 0 if compressed.
    int bitDepth = 0;
    Container container = Container::Wav;

    friend bool operator==(const AudioFileFormat &, const AudioFileFormat &) = default;
};

/// Whether rate and channel count are within the ranges above. Other files are refused: a header that claims a rate of
/// 1 Hz would turn a small file into hours of converted audio.
[[nodiscard]] constexpr bool isUsableFormat(double sampleRate, int channelCount) {
    return sampleRate >= 1000.0 && sampleRate <= 768000.0 && channelCount >= 1 && channelCount <= 256;
}

} // namespace orlenta::audio
