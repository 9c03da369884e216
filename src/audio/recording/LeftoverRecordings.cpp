#include "audio/recording/LeftoverRecordings.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include "audio/devices/AudioDebugLogger.h"
#include "audio/files/WavHeader.h"
#include "audio/recording/RecordingWriter.h"

namespace orlenta::audio {
namespace {

bool isAtRest(const QFileInfo &file, std::chrono::system_clock::time_point now) {
    const auto limit = std::chrono::duration_cast<std::chrono::milliseconds>(
        (now - LeftoverRecordings::settlingTime).time_since_epoch());
    return file.lastModified().toMSecsSinceEpoch() < limit.count();
}

// The writer of a recording holds its lock, even while no samples arrive.
bool isBeingWritten(const QString &path) {
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return false;
    const bool isHeld = ::flock(descriptor, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    ::close(descriptor);
    return isHeld;
}

bool hasSound(const QFileInfo &file) {
    return file.size() >= wavHeaderSize + RecordingWriter::format.bytesPerFrame();
}

} // namespace

QStringList LeftoverRecordings::find(const QString &folder, std::chrono::system_clock::time_point now) {
    static const QRegularExpression recording(QStringLiteral(
        "^direction_[0-9A-Fa-f]{8}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{4}-[0-9A-Fa-f]{12}\\.wav\\z"));
    QStringList found;
    const QFileInfoList files =
        QDir(folder).entryInfoList({QStringLiteral("direction_*.wav")}, QDir::Files | QDir::NoSymLinks, QDir::Name);
    for (const QFileInfo &file : files) {
        const QString path = file.absoluteFilePath();
        if (!recording.match(file.fileName()).hasMatch() || !isAtRest(file, now) || isBeingWritten(path))
            continue;
        if (hasSound(file)) {
            AudioDebugLogger::log(
                QStringLiteral("LeftoverRecordings found %1, size: %2 bytes").arg(path).arg(file.size()));
            found.append(path);
        } else {
            AudioDebugLogger::log(QStringLiteral("LeftoverRecordings removed %1, which is empty").arg(path));
            QFile::remove(path);
        }
    }
    return found;
}

} // namespace orlenta::audio
