#pragma once

#include <chrono>
#include <optional>

#include <QtCore/QString>
#include <QtCore/QUrl>

namespace orlenta::audio {

/// The durations shown beside takes, kept for as long as the file's date and size stay the same. The cache is one for
/// the whole process and belongs to the main thread, like all of these.
class ScriptLineAudioDurationReader final {
public:
    struct FileSignature {
        std::optional<std::chrono::sys_time<std::chrono::nanoseconds>> modificationDate;
        std::optional<qint64> fileSize;

        friend bool operator==(const FileSignature &, const FileSignature &) = default;
    };
    struct CachedDuration {
        FileSignature signature;
        std::chrono::duration<double> duration{};
    };

    ScriptLineAudioDurationReader() = delete;

    /// The audio's length, or nothing where the file can't be read. A hit costs one look at the file's attributes.
    /// `context` says in the log who asks.
    [[nodiscard]] static std::optional<std::chrono::duration<double>> duration(const QUrl &url, const QString &context);
    /// Minutes and seconds, "1:05", or "--:--" where there is no duration.
    [[nodiscard]] static QString text(std::optional<std::chrono::duration<double>> duration);
};

} // namespace orlenta::audio
