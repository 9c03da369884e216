#include "audio/files/AudioDurations.h"

#include <algorithm>
#include <stop_token>
#include <sys/stat.h>
#include <utility>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QPointer>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/files/AudioFileReader.h"
#include "audio/files/FrameCount.h"
#include "base/LatestFirst.h"

namespace orlenta::audio {
namespace {

using DurationSeconds = std::optional<ScriptLineAudioDurationReader::Seconds>;
using DurationSignature = ScriptLineAudioDurationReader::FileSignature;

DurationSignature signatureOf(const QString &path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    const auto sinceEpoch =
        std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return {std::chrono::sys_time<std::chrono::nanoseconds>(sinceEpoch), static_cast<qint64>(status.st_size)};
}

/// A file at the time its duration was requested.
struct DurationQuestion {
    QString path;
    DurationSignature signature;
    QString context;

    friend bool operator==(const DurationQuestion &a, const DurationQuestion &b) {
        return a.path == b.path && a.signature == b.signature;
    }
};

void logDurationError(const QString &context, const QString &reason) {
    AudioDebugLogger::log(QStringLiteral("%1 AVAudioFile duration ERROR: %2").arg(context, reason));
}

DurationSeconds readDuration(const DurationQuestion &asked, const std::stop_token &stop) {
    const QString file = QFileInfo(asked.path).fileName();
    auto reader = AudioFileReader::open(asked.path);
    if (!reader) {
        logDurationError(asked.context, reader.error().description());
        return std::nullopt;
    }
    const double rate = reader->sampleRate();
    if (rate <= 0.0) {
        logDurationError(asked.context, QStringLiteral("invalid sample rate file=") + file);
        return std::nullopt;
    }
    const auto frames = countFrames(reader.value(), stop);
    if (!frames)
        return std::nullopt;
    AudioDebugLogger::log(QStringLiteral("%1 AVAudioFile duration read file=%2").arg(asked.context, file));
    return ScriptLineAudioDurationReader::Seconds(static_cast<double>(*frames) / rate);
}

/// The known durations, the callers waiting for unknown ones, and the reader thread.
class DurationCache final : public QObject {
public:
    static DurationCache &shared() {
        static QPointer<DurationCache> cache;
        if (cache == nullptr)
            cache = new DurationCache(QCoreApplication::instance());
        return *cache;
    }

    DurationSeconds find(const DurationQuestion &asked, const QObject *asker, const std::function<void()> &known) {
        const auto cached = m_cache.constFind(asked.path);
        if (cached != m_cache.constEnd() && cached->signature == asked.signature) {
            AudioDebugLogger::log(
                QStringLiteral("%1 duration cache hit file=%2").arg(asked.context, QFileInfo(asked.path).fileName()));
            return cached->duration;
        }
        QList<Asker> &askers = m_askers[asked.path];
        if (std::ranges::none_of(askers, [asker](const Asker &waiting) { return waiting.object == asker; }))
            askers.append({asker, known});
        m_reading.ask(asked);
        return std::nullopt;
    }

    /// The file's attributes, cached until the event loop's next iteration: one change redraws a row several times, and
    /// stat() may have to cross a network.
    DurationSignature look(const QString &path) {
        if (m_looks.isEmpty())
            QMetaObject::invokeMethod(
                this, [this] { m_looks.clear(); }, Qt::QueuedConnection);
        const auto known = m_looks.constFind(path);
        return known != m_looks.constEnd() ? *known : *m_looks.insert(path, signatureOf(path));
    }

private:
    struct Asker {
        QPointer<const QObject> object;
        std::function<void()> known;
    };

    explicit DurationCache(QObject *parent)
        : QObject(parent),
          m_reading(&readDuration, [this](const DurationQuestion &asked, const DurationSeconds &duration) {
              store(asked, duration);
          }) {}

    void store(const DurationQuestion &asked, const DurationSeconds &duration) {
        m_cache.insert(asked.path, {asked.signature, duration});
        const QList<Asker> askers = m_askers.take(asked.path);
        for (const Asker &asker : askers)
            if (asker.object != nullptr)
                asker.known();
    }

    QHash<QString, ScriptLineAudioDurationReader::CachedDuration> m_cache;
    QHash<QString, DurationSignature> m_looks;
    QHash<QString, QList<Asker>> m_askers;
    base::LatestFirst<DurationQuestion, DurationSeconds> m_reading;
};

} // namespace

std::optional<ScriptLineAudioDurationReader::Seconds>
ScriptLineAudioDurationReader::duration(const QUrl &url, const QString &context, const QObject *asker,
                                        const std::function<void()> &known) {
    DurationCache &cache = DurationCache::shared();
    const QString path = url.toLocalFile();
    return cache.find({path, cache.look(path), context}, asker, known);
}

QString ScriptLineAudioDurationReader::text(std::optional<Seconds> duration) {
    if (!duration)
        return QStringLiteral("--:--");
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*duration).count();
    return QString::asprintf("%d:%02d", static_cast<int>(seconds / 60), static_cast<int>(seconds % 60));
}

QString ScriptLineAudioDurationReader::exactText(std::optional<Seconds> duration) {
    if (!duration)
        return {};
    // Cut like the text, so that the two never contradict each other.
    const auto tenths = static_cast<qint64>(duration->count() * 10.0);
    const qint64 minutes = tenths / 600;
    const QString seconds = QStringLiteral("%1 seconds").arg(static_cast<double>(tenths % 600) / 10.0, 0, 'f', 1);
    return minutes == 0 ? seconds
                        : QStringLiteral("%1 %2 %3")
                              .arg(QString::number(minutes),
                                   minutes == 1 ? QStringLiteral("minute") : QStringLiteral("minutes"), seconds);
}

} // namespace orlenta::audio
