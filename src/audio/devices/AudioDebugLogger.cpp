#include "audio/devices/AudioDebugLogger.h"

#include <QtCore/QDateTime>

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

QString AudioDebugLogger::microphoneAuthorizationDescription(MicrophoneAuthorization authorization) {
    log(QStringLiteral("AVCaptureDevice.authorizationStatus(for: .audio) from "
                       "AudioDebugLogger.microphoneAuthorizationDescription"));
    switch (authorization) {
    case MicrophoneAuthorization::NotDetermined:
        return QStringLiteral("notDetermined");
    case MicrophoneAuthorization::Restricted:
        return QStringLiteral("restricted");
    case MicrophoneAuthorization::Denied:
        return QStringLiteral("denied");
    case MicrophoneAuthorization::Authorized:
        return QStringLiteral("authorized");
    case MicrophoneAuthorization::Unknown:
        return QStringLiteral("unknown");
    }
    return {};
}

} // namespace orlenta::audio
