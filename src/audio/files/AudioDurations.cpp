#include "audio/files/AudioDurations.h"

#include <sys/stat.h>

#include <QtCore/QFile>
#include <QtCore/QHash>

#include "audio/files/AudioFileReader.h"
#include "base/LogCategories.h"

namespace orlenta::audio {
namespace {

ScriptLineAudioDurationReader::FileSignature signatureOf(const QString &path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    const auto sinceEpoch =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return {std::chrono::sys_time<std::chrono::nanoseconds>(sinceEpoch), static_cast<qint64>(status.st_size)};
}

QHash<QString, ScriptLineAudioDurationReader::CachedDuration> &durationCache() {
    static QHash<QString, ScriptLineAudioDurationReader::CachedDuration> cache;
    return cache;
}

void logDurationError(const QString &context, const QString &reason) {
    qCInfo(base::log::audioDebug).noquote() << context << QStringLiteral("AVAudioFile duration ERROR: ") + reason;
}

} // namespace

std::optional<std::chrono::duration<double>> ScriptLineAudioDurationReader::duration(const QUrl &url,
                                                                                     const QString &context) {
    const QString path = url.toLocalFile();
    const QString file = url.fileName();
    const FileSignature signature = signatureOf(path);
    auto &cache = durationCache();
    const auto known = cache.constFind(path);
    if (known != cache.constEnd() && known->signature == signature) {
        qCDebug(base::log::audioDebug).noquote() << context << QStringLiteral("duration cache hit file=") + file;
        return known->duration;
    }
    auto reader = AudioFileReader::open(path);
    if (!reader) {
        logDurationError(context, reader.error().description());
        return std::nullopt;
    }
    const double rate = reader->sampleRate();
    if (rate <= 0.0) {
        logDurationError(context, QStringLiteral("invalid sample rate file=") + file);
        return std::nullopt;
    }
    const std::chrono::duration<double> duration(static_cast<double>(reader.value().frames()) / rate);
    cache.insert(path, {signature, duration});
    qCDebug(base::log::audioDebug).noquote() << context << QStringLiteral("AVAudioFile duration read file=") + file;
    return duration;
}

QString ScriptLineAudioDurationReader::text(std::optional<std::chrono::duration<double>> duration) {
    if (!duration)
        return QStringLiteral("--:--");
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*duration).count();
    return QString::asprintf("%d:%02d", static_cast<int>(seconds / 60), static_cast<int>(seconds % 60));
}

} // namespace orlenta::audio
