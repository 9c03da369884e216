#include "speech/account/ServiceAddresses.h"

namespace orlenta::speech {

QUrl defaultEndpoint() {
    return QUrl(QStringLiteral("https://api.elevenlabs.io"));
}

QString keySettingsAddress() {
    return QStringLiteral("https://elevenlabs.io/app/settings/api-keys");
}

QString planAddress() {
    return QStringLiteral("https://elevenlabs.io/app/subscription");
}

QString connectGuideAddress() {
    return QStringLiteral("https://orlenta.com/guide#connect-elevenlabs");
}

} // namespace orlenta::speech
