#pragma once

#include <span>
#include <vector>

#include <QtCore/QtGlobal>

namespace orlenta::audio {

/// The last of what was sent to an output, so that a stop can let the sound fall away instead of cutting it, which
/// clicks. One thread at a time.
class WrittenTail final {
public:
    /// Keeps the last `frames` frames of `channelCount` interleaved channels.
    WrittenTail(int channelCount, qint64 frames);

    void append(std::span<const float> samples);
    /// All frames that were ever appended.
    [[nodiscard]] qint64 writtenFrames() const { return m_written; }
    /// What to send in the place of everything from `frame` on, counted from the first ever appended: the same sound,
    /// falling to nothing over `fadeFrames`, then silence up to the end. Empty when that is not kept any more, or not
    /// yet there.
    [[nodiscard]] std::vector<float> fadedFrom(qint64 frame, qint64 fadeFrames) const;

private:
    std::size_t m_channels;
    qint64 m_capacity;
    qint64 m_written = 0;
    std::vector<float> m_ring;
};

} // namespace orlenta::audio
