#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QtCore/QString>
#include <QtCore/QUrl>

class QObject;

namespace orlenta::audio {

/// Durations shown next to takes, cached while a file's date and size stay the same. One cache for the process,
/// destroyed with the application object. A background thread reads the files, most recent request first. Main thread.
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
        /// Empty if the file couldn't be read. It isn't retried until its signature changes.
        std::optional<Seconds> duration;
    };

    ScriptLineAudioDurationReader() = delete;

    /// Returns the duration if it is cached. Otherwise starts reading the file and returns nothing; when done, the
    /// event loop calls `known`, unless `asker` has been destroyed, and the caller should ask again. A cache hit costs
    /// one stat() call per event loop iteration. `context` names the caller in the log.
    [[nodiscard]] static std::optional<Seconds> duration(const QUrl &url, const QString &context, const QObject *asker,
                                                         const std::function<void()> &known);
    /// Minutes and seconds, for example "1:05", or "--:--" without a duration.
    [[nodiscard]] static QString text(std::optional<Seconds> duration);
    /// Minutes, seconds and tenths in words, for example "1 minute 5.2 seconds". Empty without a duration.
    [[nodiscard]] static QString exactText(std::optional<Seconds> duration);
};

} // namespace orlenta::audio
