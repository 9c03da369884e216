#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "base/Result.h"

class QObject;

namespace orlenta::audio {

class RecordingWriter;
class SoundServer;

/// Records from one source and no other; when the source disappears, the stream ends. Use on the main thread; the sound
/// server's thread passes the samples to the writer.
class InputStream final {
public:
    struct Source {
        /// The source's name on the server.
        QByteArray name;
        /// The source's own rate in Hz, so that the server doesn't resample.
        std::uint32_t sampleRate = 0;
    };
    enum class End {
        /// After stop(), the final samples have arrived.
        Stopped,
        /// The source or the server disappeared during the take.
        Lost,
        /// The server stopped responding during the take, or the source stopped delivering samples.
        Stalled,
        /// Never started: the server refused to open the source.
        Refused,
        /// Never started: the server doesn't respond.
        Unanswered,
        /// Never started: the server denies this process access.
        Forbidden,
    };
    /// Called asynchronously on `receiver`'s thread, possibly after the stream has been destroyed.
    struct Events {
        QObject *receiver = nullptr;
        std::function<void()> started;
        /// Called once; the writer gets no more samples afterwards. `reason` is the server's message, or for Stalled
        /// one for the user.
        std::function<void(End end, const QString &reason)> ended;
    };

    /// Fails with the server's message if the request can't be sent. `writer` must outlive the stream.
    [[nodiscard]] static base::Result<std::unique_ptr<InputStream>, QString>
    open(SoundServer &server, const Source &source, RecordingWriter &writer, Events events);
    ~InputStream();
    InputStream(const InputStream &) = delete;
    InputStream &operator=(const InputStream &) = delete;

    /// Ends the take now: samples captured until now still arrive, later ones are dropped.
    void stop();
    /// Duration of the samples delivered so far.
    [[nodiscard]] std::chrono::duration<double> capturedTime() const;

private:
    class Link;

    explicit InputStream(std::unique_ptr<Link> link);

    std::unique_ptr<Link> m_link;
};

} // namespace orlenta::audio
