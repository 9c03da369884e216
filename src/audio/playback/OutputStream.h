#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include <QtCore/QString>

#include "audio/playback/PlaybackSource.h"
#include "audio/playback/RoutedAudioPlayerError.h"
#include "base/Result.h"

class QObject;
class QThreadPool;

namespace orlenta::audio {

class SoundServer;

/// Plays one stretch of a file to one sink. Every play, seek and change of device creates a new stream: that is as fast
/// as restarting one, and a flushed stream loses track of its position. The destructor fades out within about 30 ms, as
/// fast as possible without a click. Use on the main thread; the data is sent on the sound server's thread.
class OutputStream final {
public:
    /// Called asynchronously on `receiver`'s thread, possibly after the stream has been destroyed. `started` comes
    /// first, unless the stream fails before; then at most one of the others.
    struct Events {
        QObject *receiver = nullptr;
        /// The sink has accepted the stream.
        std::function<void()> started;
        /// The last frame has been played.
        std::function<void()> finished;
        /// The chosen sink is gone; resume at `frame`, which repeats a little rather than leaving a gap.
        std::function<void(qint64 frame)> lost;
        /// Everything else: the sink refused the stream, the server is gone or doesn't respond, the sink has stalled,
        /// or the file couldn't be read any further (then everything readable has been played).
        std::function<void(const RoutedAudioPlayerError &error)> failed;
    };

    /// Starts playing. `stretch` may be shared only with the streams before and after this one, and only if `readers`
    /// has one thread. Without a device, plays on the system's default output and follows its changes; with one, plays
    /// only there.
    [[nodiscard]] static base::Result<std::unique_ptr<OutputStream>, RoutedAudioPlayerError>
    open(SoundServer &server, std::optional<std::uint32_t> deviceID, QThreadPool &readers,
         const PlaybackSource::Stretch &stretch, Events events);
    ~OutputStream();
    OutputStream(const OutputStream &) = delete;
    OutputStream &operator=(const OutputStream &) = delete;

    /// The frame of the file that is audible now; nothing until the first one is.
    [[nodiscard]] std::optional<qint64> currentFrame() const;

private:
    class Link;

    explicit OutputStream(std::unique_ptr<Link> link);

    std::unique_ptr<Link> m_link;
};

} // namespace orlenta::audio
