#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "audio/files/AudioFileReader.h"
#include "audio/files/ConvertingReader.h"

namespace orlenta::audio {

/// The frames of a file at the rate of the device they go to: passed through where the rates agree, so that a player is
/// bit-exact there, and else converted here, since what sound servers do is audibly worse. A start inside the file is
/// faded in over `fadeLength`, since a wave cut in the middle clicks; a start at frame 0 is not. One thread at a time.
class PlaybackSource final {
public:
    static constexpr std::chrono::milliseconds fadeLength{5};

    /// A part of a file. Wherever `reader` stands, reading begins at `startFrame`.
    struct Stretch {
        std::shared_ptr<AudioFileReader> reader;
        /// Hertz, of the file, as is the number of channels: the reader can't be asked for them while somebody reads.
        double sampleRate = 0.0;
        int channelCount = 0;
        qint64 startFrame = 0;
    };

    /// `deviceRate` in hertz.
    PlaybackSource(const Stretch &stretch, double deviceRate);

    PlaybackSource(PlaybackSource &&) noexcept = default;
    PlaybackSource &operator=(PlaybackSource &&) noexcept = default;

    [[nodiscard]] int channelCount() const { return m_channelCount; }
    [[nodiscard]] double deviceRate() const { return m_deviceRate; }
    /// The file's frame that is heard `seconds` after the start. Any thread, while another reads.
    [[nodiscard]] qint64 fileFrame(double seconds) const;

    /// Fills `samples`, interleaved, from the start and gives the frames; 0 at the end only.
    base::Result<qsizetype, AudioFileError> read(std::span<float> samples);

private:
    base::Result<void, AudioFileError> open();
    base::Result<qsizetype, AudioFileError> readUnfaded(std::span<float> samples);
    base::Result<qsizetype, AudioFileError> readConverted(std::span<float> samples);
    void fadeIn(std::span<float> samples);

    std::shared_ptr<AudioFileReader> m_reader;
    /// Hertz.
    double m_fileRate;
    int m_channelCount;
    qint64 m_startFrame;
    double m_deviceRate;
    std::optional<ConvertingReader> m_converter;
    std::vector<double> m_converted;
    bool m_isOpened = false;
    /// Frames of the fade, at the device's rate, and those that have gone by.
    qint64 m_fadeFrames = 0;
    qint64 m_fadedFrames = 0;
};

} // namespace orlenta::audio
