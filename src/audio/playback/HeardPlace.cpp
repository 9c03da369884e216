#include "audio/playback/HeardPlace.h"

#include <algorithm>

namespace orlenta::audio {

void HeardPlace::addWritten(Seconds length) {
    const std::lock_guard guard(m_guard);
    m_written += length;
}

void HeardPlace::note(Seconds place) {
    const std::lock_guard guard(m_guard);
    m_noted = place;
    m_notedAt = Clock::now();
}

std::optional<HeardPlace::Seconds> HeardPlace::now() const {
    const std::lock_guard guard(m_guard);
    if (!m_noted)
        return {};
    return std::min<Seconds>(*m_noted + (Clock::now() - m_notedAt), m_written);
}

std::optional<HeardPlace::Seconds> HeardPlace::forPlayhead() {
    const std::optional<Seconds> place = now();
    if (!place)
        return {};
    const std::lock_guard guard(m_guard);
    m_playhead = std::max(m_playhead, *place);
    return m_playhead;
}

} // namespace orlenta::audio
