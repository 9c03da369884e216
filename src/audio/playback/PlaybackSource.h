#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"

namespace orlenta::audio {

/// Reads a file at the device's sample rate. If the rates match, samples pass unchanged up to full scale; otherwise we
/// resample here, because the sound servers' resamplers are audibly worse. Fades in over `fadeLength` when starting
/// inside the file, to avoid a click; not when starting at frame 0. One thread at a time.
class PlaybackSource final {
public:
    static constexpr std::chrono::milliseconds fadeLength{5};

    /// A part of a file. Reading starts at `startFrame`, wherever `reader` is.
    struct Stretch {
        std::shared_ptr<AudioFileReader> reader;
        /// The file's rate in Hz. Rate and channel count are copied here because the reader can't be queried while
        /// another thread reads.
        double sampleRate = 0.0;
        int channelCount = 0;
        qint64 startFrame = 0;
    };

    /// `deviceRate` in Hz.
    PlaybackSource(const Stretch &stretch, double deviceRate);

    PlaybackSource(PlaybackSource &&) noexcept = default;
    PlaybackSource &operator=(PlaybackSource &&) noexcept = default;

    [[nodiscard]] int channelCount() const { return m_channelCount; }
    [[nodiscard]] double deviceRate() const { return m_deviceRate; }
    /// The file's frame that plays `seconds` after the start. Any thread, even while another reads.
    [[nodiscard]] qint64 fileFrame(double seconds) const;

    /// Fills `samples` (interleaved) and returns the number of frames, 0 only at the end.
    base::Result<qsizetype, AudioFileError> read(std::span<float> samples);

private:
    base::Result<void, AudioFileError> open();
    base::Result<qsizetype, AudioFileError> readUnfaded(std::span<float> samples);
    base::Result<qsizetype, AudioFileError> readConverted(std::span<float> samples);
    void fadeIn(std::span<float> samples);

    std::shared_ptr<AudioFileReader> m_reader;
    /// Hz.
    double m_fileRate;
    int m_channelCount;
    qint64 m_startFrame;
    double m_deviceRate;
    std::optional<ConvertingReader> m_converter;
    std::vector<double> m_converted;
    bool m_isOpened = false;
    /// Length of the fade in frames at the device's rate, and how many have passed.
    qint64 m_fadeFrames = 0;
    qint64 m_fadedFrames = 0;
};

} // namespace orlenta::audio
