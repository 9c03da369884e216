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

/// One stretch of one file on its way to one sink: made for each play, seek and change of device, since a fresh stream
/// starts as fast as an old one restarts, and a flushed one loses count of its place. When it is destroyed the sound
/// falls away within some 30 milliseconds, as fast as it can without a click. Made, asked and destroyed on the main
/// thread; sending runs on the sound server's.
class OutputStream final {
public:
    /// What becomes of the stream. Each is called on `receiver`'s thread, later than what caused it, and may come when
    /// the stream is gone already. After `started` at most one of the others comes, and `lost` never without it.
    struct Events {
        QObject *receiver = nullptr;
        /// The sink has accepted the stream.
        std::function<void()> started;
        /// The last frame has been heard.
        std::function<void()> finished;
        /// The chosen sink is gone; `frame` of the file is where to go on. A little is heard twice rather than lost.
        std::function<void(qint64 frame)> lost;
        /// Anything else that ended it: the sink refused the stream, the server is gone or no longer answers, the sink
        /// stands still, or the file could not be read on (then what could be read has been heard).
        std::function<void(const RoutedAudioPlayerError &error)> failed;
    };

    /// Starts playing what nobody else reads but the streams before and after, on the one thread of `readers`. Without
    /// a device, on the system's default output, following it when it changes; with one, on that sink and no other.
    [[nodiscard]] static base::Result<std::unique_ptr<OutputStream>, RoutedAudioPlayerError>
    open(SoundServer &server, std::optional<std::uint32_t> deviceID, QThreadPool &readers,
         const PlaybackSource::Stretch &stretch, Events events);
    ~OutputStream();
    OutputStream(const OutputStream &) = delete;
    OutputStream &operator=(const OutputStream &) = delete;

    /// The frame of the file that is heard now; nothing before the first one is.
    [[nodiscard]] std::optional<qint64> currentFrame() const;

private:
    class Link;

    explicit OutputStream(std::unique_ptr<Link> link);

    std::unique_ptr<Link> m_link;
};

} // namespace orlenta::audio
