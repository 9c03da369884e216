#include "audio/playback/WrittenTail.h"

#include <algorithm>

#include "audio/playback/FadeCurve.h"

namespace orlenta::audio {

WrittenTail::WrittenTail(int channelCount, qint64 frames)
    : m_channels(static_cast<std::size_t>(channelCount)), m_capacity(frames),
      m_ring(m_channels * static_cast<std::size_t>(frames)) {}

void WrittenTail::append(std::span<const float> samples) {
    for (; samples.size() >= m_channels; ++m_written) {
        const auto at = static_cast<std::size_t>(m_written % m_capacity) * m_channels;
        std::copy_n(samples.begin(), m_channels, m_ring.begin() + static_cast<std::ptrdiff_t>(at));
        samples = samples.subspan(m_channels);
    }
}

std::vector<float> WrittenTail::fadedFrom(qint64 frame, qint64 fadeFrames) const {
    if (frame < std::max<qint64>(m_written - m_capacity, 0) || frame >= m_written)
        return {};
    std::vector<float> faded(static_cast<std::size_t>(m_written - frame) * m_channels);
    const qint64 falling = std::min(fadeFrames, m_written - frame);
    for (qint64 i = 0; i < falling; ++i) {
        const float gain = fadeCurve(1.0 - static_cast<double>(i + 1) / static_cast<double>(fadeFrames));
        const auto from = static_cast<std::size_t>((frame + i) % m_capacity) * m_channels;
        const auto to = static_cast<std::size_t>(i) * m_channels;
        for (std::size_t channel = 0; channel < m_channels; ++channel)
            faded[to + channel] = gain * m_ring[from + channel];
    }
    return faded;
}

} // namespace orlenta::audio
