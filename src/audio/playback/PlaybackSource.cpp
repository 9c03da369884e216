#include "audio/playback/PlaybackSource.h"

#include <algorithm>
#include <cmath>

#include "audio/playback/FadeCurve.h"

namespace orlenta::audio {

PlaybackSource::PlaybackSource(const Stretch &stretch, double deviceRate)
    : m_reader(stretch.reader), m_fileRate(stretch.sampleRate), m_channelCount(stretch.channelCount),
      m_startFrame(stretch.startFrame), m_deviceRate(deviceRate) {
    if (m_startFrame > 0)
        m_fadeFrames = std::llround(std::chrono::duration<double>(fadeLength).count() * deviceRate);
}

qint64 PlaybackSource::fileFrame(double seconds) const {
    return m_startFrame + static_cast<qint64>(std::floor(seconds * m_fileRate));
}

base::Result<qsizetype, AudioFileError> PlaybackSource::read(std::span<float> samples) {
    auto frames = readUnfaded(samples);
    if (frames && m_fadedFrames < m_fadeFrames)
        fadeIn(samples.first(static_cast<std::size_t>(*frames * channelCount())));
    return frames;
}

void PlaybackSource::fadeIn(std::span<float> samples) {
    const auto channels = static_cast<std::size_t>(channelCount());
    for (; !samples.empty() && m_fadedFrames < m_fadeFrames; ++m_fadedFrames) {
        const double share = static_cast<double>(m_fadedFrames) / static_cast<double>(m_fadeFrames);
        const float gain = fadeCurve(share);
        for (float &sample : samples.first(channels))
            sample *= gain;
        samples = samples.subspan(channels);
    }
}

base::Result<qsizetype, AudioFileError> PlaybackSource::readUnfaded(std::span<float> samples) {
    if (!m_isOpened) {
        if (auto opened = open(); !opened)
            return base::fail(opened.error());
        m_isOpened = true;
    }
    auto frames = m_converter ? readConverted(samples) : m_reader->readFrames(samples);
    if (!frames)
        return frames;
    // Resampling can overshoot full scale, and floating-point files can exceed it. Clip here; sinks differ in how they
    // do it.
    for (float &sample : samples.first(static_cast<std::size_t>(*frames * channelCount())))
        sample = std::clamp(sample, -1.0F, 1.0F);
    return frames;
}

base::Result<qsizetype, AudioFileError> PlaybackSource::readConverted(std::span<float> samples) {
    m_converted.resize(samples.size());
    auto frames = m_converter->readFrames(m_converted);
    if (frames)
        std::transform(m_converted.begin(), m_converted.begin() + *frames * channelCount(), samples.begin(),
                       [](double sample) { return static_cast<float>(sample); });
    return frames;
}

base::Result<void, AudioFileError> PlaybackSource::open() {
    if (auto moved = m_reader->seek(m_startFrame); !moved)
        return moved;
    if (m_fileRate == m_deviceRate)
        return {};
    auto converter = ConvertingReader::create(*m_reader, m_deviceRate, channelCount());
    if (!converter)
        return base::fail(converter.error());
    m_converter = std::move(converter).value();
    return {};
}

} // namespace orlenta::audio
