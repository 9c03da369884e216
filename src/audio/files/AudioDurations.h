#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QtCore/QString>
#include <QtCore/QUrl>

class QObject;

namespace orlenta::audio {

/// The durations shown beside takes, kept for as long as the file's date and size stay the same. The cache is one for
/// the whole process and belongs to the main thread, like all of these; files are read on a thread of its own, the
/// latest asked for first. It goes with the application object.
class ScriptLineAudioDurationReader final {
public:
    using Seconds = std::chrono::duration<double>;

    struct FileSignature {
        std::optional<std::chrono::sys_time<std::chrono::nanoseconds>> modificationDate;
        std::optional<qint64> fileSize;

        friend bool operator==(const FileSignature &, const FileSignature &) = default;
    };
    struct CachedDuration {
        FileSignature signature;
        /// Nothing where a file of this signature could not be read: it isn't tried again.
        std::optional<Seconds> duration;
    };

    ScriptLineAudioDurationReader() = delete;

    /// The audio's length as far as it is known. Where the file has to be read first that begins, and once it is over
    /// `known` is called by the event loop unless `asker` has gone: ask again then. A hit costs one look at the file's
    /// attributes, which holds until the event loop turns. `context` says in the log who asks.
    [[nodiscard]] static std::optional<Seconds> duration(const QUrl &url, const QString &context, const QObject *asker,
                                                         const std::function<void()> &known);
    /// Minutes and seconds, "1:05", or "--:--" where there is no duration.
    [[nodiscard]] static QString text(std::optional<Seconds> duration);
};

} // namespace orlenta::audio
