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

/// One stretch of listening to one source, and to no other: when the source goes, the stream ends. Made, asked and
/// destroyed on the main thread; the samples pass from the sound server's thread to the writer.
class InputStream final {
public:
    struct Source {
        /// The source's name at the server.
        QByteArray name;
        /// Hertz: the source's own, so that the server has nothing to convert.
        std::uint32_t sampleRate = 0;
    };
    enum class End {
        /// stop() was called, and the samples that were on their way then have come.
        Stopped,
        /// The source or the server went away in mid-take.
        Lost,
        /// The server stopped answering in mid-take, or the source delivers nothing any more.
        StoodStill,
        /// It never began: the server wouldn't open the source.
        Refused,
        /// It never began: the server doesn't answer.
        Unanswered,
        /// It never began: the server doesn't let this process listen.
        Forbidden,
    };
    /// Each is called on `receiver`'s thread, later than what caused it, and may come when the stream is gone already.
    struct Events {
        QObject *receiver = nullptr;
        std::function<void()> started;
        /// Comes once; nothing reaches the writer afterwards. `reason` is in the server's words, or in the user's where
        /// the stream stood still.
        std::function<void(End end, const QString &reason)> ended;
    };

    /// Fails with the server's words when the stream can't even be asked for. `writer` outlives the stream.
    [[nodiscard]] static base::Result<std::unique_ptr<InputStream>, QString>
    open(SoundServer &server, const Source &source, RecordingWriter &writer, Events events);
    ~InputStream();
    InputStream(const InputStream &) = delete;
    InputStream &operator=(const InputStream &) = delete;

    /// Ends the take at this moment: what has sounded by now still comes, what comes later is cut off.
    void stop();
    /// How much has been delivered so far.
    [[nodiscard]] std::chrono::duration<double> capturedTime() const;

private:
    class Link;

    explicit InputStream(std::unique_ptr<Link> link);

    std::unique_ptr<Link> m_link;
};

} // namespace orlenta::audio
