#pragma once

#include <span>
#include <vector>

#include <QtCore/QtGlobal>

namespace orlenta::audio {

/// Keeps the audio last sent to an output, so that stopping can fade it out instead of clicking. One thread at a time.
class WrittenTail final {
public:
    /// Keeps the last `frames` frames of `channelCount` interleaved channels.
    WrittenTail(int channelCount, qint64 frames);

    void append(std::span<const float> samples);
    /// Total number of frames appended.
    [[nodiscard]] qint64 writtenFrames() const { return m_written; }
    /// Replacement for everything from `frame`, counted from the first frame appended: the same audio faded out over
    /// `fadeFrames`, then silence up to the end. Empty if `frame` is no longer kept or not yet written.
    [[nodiscard]] std::vector<float> fadedFrom(qint64 frame, qint64 fadeFrames) const;

private:
    std::size_t m_channels;
    qint64 m_capacity;
    qint64 m_written = 0;
    std::vector<float> m_ring;
};

} // namespace orlenta::audio
