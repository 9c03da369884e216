#pragma once

#include <memory>
#include <optional>
#include <span>

#include <QtCore/QString>

#include "audio/playback/PlaybackSource.h"

class QThreadPool;

namespace orlenta::audio {

/// Reads a file ahead of what is played, on a thread of a pool, so that a slow disk or a long way to the start of a
/// stretch never holds up the sound server's thread. Destroying it waits for nothing.
class PlaybackFeed final {
public:
    /// What take() got.
    struct Taken {
        qsizetype frames = 0;
        /// Nothing will come any more.
        bool isEnd = false;
    };

    /// Reading begins at once. A pool of one thread lets several feeds follow each other over one reader.
    PlaybackFeed(QThreadPool &readers, PlaybackSource source);
    ~PlaybackFeed();
    PlaybackFeed(const PlaybackFeed &) = delete;
    PlaybackFeed &operator=(const PlaybackFeed &) = delete;

    [[nodiscard]] int channelCount() const;
    [[nodiscard]] double deviceRate() const;
    /// The file's frame that is heard `seconds` after the start. Any thread.
    [[nodiscard]] qint64 fileFrame(double seconds) const;

    /// Fills `samples`, interleaved, with what has been read, as far as that goes. One thread at a time.
    [[nodiscard]] Taken take(std::span<float> samples);
    /// Why reading ended before the end of the file, in a sentence for the user; nothing when it did not. Any thread.
    [[nodiscard]] std::optional<QString> failure() const;

private:
    struct Shared;

    static void fill(const std::shared_ptr<Shared> &shared);
    void startFilling();

    QThreadPool &m_readers;
    std::shared_ptr<Shared> m_shared;
};

} // namespace orlenta::audio
