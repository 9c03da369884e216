#pragma once

#include <memory>
#include <optional>
#include <span>

#include <QtCore/QString>

#include "audio/playback/PlaybackSource.h"

class QThreadPool;

namespace orlenta::audio {

/// Reads a file ahead of playback on a pool thread, so that a slow disk or a long seek never blocks the sound server's
/// thread. The destructor doesn't wait.
class PlaybackFeed final {
public:
    /// Result of take().
    struct Taken {
        qsizetype frames = 0;
        /// No more frames will follow.
        bool isEnd = false;
    };

    /// Starts reading immediately. With a pool of one thread, consecutive feeds can share one reader.
    PlaybackFeed(QThreadPool &readers, PlaybackSource source);
    ~PlaybackFeed();
    PlaybackFeed(const PlaybackFeed &) = delete;
    PlaybackFeed &operator=(const PlaybackFeed &) = delete;

    [[nodiscard]] int channelCount() const;
    [[nodiscard]] double deviceRate() const;
    /// The file's frame that plays `seconds` after the start. Any thread.
    [[nodiscard]] qint64 fileFrame(double seconds) const;

    /// Moves available interleaved samples into `samples`. One thread at a time.
    [[nodiscard]] Taken take(std::span<float> samples);
    /// If reading failed before the end of the file, the error message for the user. Any thread.
    [[nodiscard]] std::optional<QString> failure() const;

private:
    struct Shared;

    static void fill(const std::shared_ptr<Shared> &shared);
    void startFilling();

    QThreadPool &m_readers;
    std::shared_ptr<Shared> m_shared;
};

} // namespace orlenta::audio
