#include "audio/devices/AudioDebugLogger.h"

#include <QtCore/QDateTime>

#include "audio/devices/SoundServer.h"
#include "base/LogCategories.h"

namespace orlenta::audio {

void AudioDebugLogger::log(const QString &message, const std::source_location &where) {
    if (!base::log::audioDebug().isInfoEnabled())
        return;
    QString file = QString::fromUtf8(where.file_name());
    file = file.mid(file.lastIndexOf(u'/') + 1);
    file.truncate(file.lastIndexOf(u'.'));
    qCInfo(base::log::audioDebug).noquote().nospace()
        << "[TCCTrace] " << QDateTime::currentDateTimeUtc().toString(Qt::ISODate) << " | " << message << " | " << file
        << ":" << where.line() << " | " << where.function_name();
}

QString AudioDebugLogger::microphoneAuthorizationDescription(const SoundServer &server) {
    log(QStringLiteral("AVCaptureDevice.authorizationStatus(for: .audio) from "
                       "AudioDebugLogger.microphoneAuthorizationDescription"));
    return server.state() == SoundServer::State::Ready && !server.devices().inputs.isEmpty()
               ? QStringLiteral("authorized")
               : QStringLiteral("notDetermined");
}

} // namespace orlenta::audio
