#include "audio/playback/PlaybackFeed.h"

#include <algorithm>
#include <cmath>
#include <mutex>
#include <vector>

#include <QtCore/QThreadPool>

namespace orlenta::audio {

namespace {

/// How far to read ahead.
constexpr auto feedLength = std::chrono::milliseconds(1000);
/// Block size; each block can be taken as soon as it has been read.
constexpr qsizetype feedBlockFrames = 2048;

} // namespace

struct PlaybackFeed::Shared {
    explicit Shared(PlaybackSource from)
        : channels(static_cast<std::size_t>(from.channelCount())), source(std::move(from)),
          ring(channels * static_cast<std::size_t>(std::max<long long>(
                              std::llround(std::chrono::duration<double>(feedLength).count() * source.deviceRate()),
                              2 * feedBlockFrames))) {}

    const std::size_t channels;
    /// Used only by the thread that fills the ring.
    PlaybackSource source;

    std::mutex guard;
    /// Ring buffer; `count` samples are available from `begin`.
    std::vector<float> ring;
    std::size_t begin = 0;
    std::size_t count = 0;
    bool isFilling = false;
    bool isEnd = false;
    bool isAbandoned = false;
    std::optional<QString> failure;
};

PlaybackFeed::PlaybackFeed(QThreadPool &readers, PlaybackSource source)
    : m_readers(readers), m_shared(std::make_shared<Shared>(std::move(source))) {
    const std::lock_guard guard(m_shared->guard);
    startFilling();
}

PlaybackFeed::~PlaybackFeed() {
    const std::lock_guard guard(m_shared->guard);
    m_shared->isAbandoned = true;
}

int PlaybackFeed::channelCount() const {
    return m_shared->source.channelCount();
}

double PlaybackFeed::deviceRate() const {
    return m_shared->source.deviceRate();
}

qint64 PlaybackFeed::fileFrame(double seconds) const {
    return m_shared->source.fileFrame(seconds);
}

std::optional<QString> PlaybackFeed::failure() const {
    const std::lock_guard guard(m_shared->guard);
    return m_shared->failure;
}

PlaybackFeed::Taken PlaybackFeed::take(std::span<float> samples) {
    Shared &shared = *m_shared;
    const std::lock_guard guard(shared.guard);
    const std::size_t size = std::min(samples.size(), shared.count) / shared.channels * shared.channels;
    const std::size_t untilWrap = std::min(size, shared.ring.size() - shared.begin);
    const auto from = shared.ring.cbegin() + static_cast<std::ptrdiff_t>(shared.begin);
    std::copy_n(from, untilWrap, samples.begin());
    std::copy_n(shared.ring.cbegin(), size - untilWrap, samples.begin() + static_cast<std::ptrdiff_t>(untilWrap));
    shared.begin = (shared.begin + size) % shared.ring.size();
    shared.count -= size;
    if (!shared.isEnd && !shared.isFilling && shared.count < shared.ring.size() / 2)
        startFilling();
    return {static_cast<qsizetype>(size / shared.channels), shared.isEnd && shared.count == 0};
}

void PlaybackFeed::startFilling() {
    m_shared->isFilling = true;
    m_readers.start([shared = m_shared] { fill(shared); });
}

void PlaybackFeed::fill(const std::shared_ptr<Shared> &shared) {
    std::vector<float> block(static_cast<std::size_t>(feedBlockFrames) * shared->channels);
    for (;;) {
        {
            const std::lock_guard guard(shared->guard);
            if (shared->isAbandoned || shared->isEnd || shared->ring.size() - shared->count < block.size()) {
                shared->isFilling = false;
                return;
            }
        }
        const auto frames = shared->source.read(block);
        const std::lock_guard guard(shared->guard);
        if (!frames)
            shared->failure = frames.error().description();
        shared->isEnd = !frames || *frames == 0;
        const std::size_t size = shared->isEnd ? 0 : static_cast<std::size_t>(*frames) * shared->channels;
        for (std::size_t i = 0, at = (shared->begin + shared->count) % shared->ring.size(); i < size; ++i) {
            shared->ring[at] = block[i];
            at = at + 1 == shared->ring.size() ? 0 : at + 1;
        }
        shared->count += size;
    }
}

} // namespace orlenta::audio
