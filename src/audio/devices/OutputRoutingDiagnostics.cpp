#include "audio/devices/OutputRoutingDiagnostics.h"

#include "audio/devices/AudioDebugLogger.h"

namespace orlenta::audio {

void OutputRoutingDiagnostics::recordRoutingFailure(const QString &description, const QString &context) {
    m_message = description;
    m_context = context;
    AudioDebugLogger::log(
        QStringLiteral("OutputRoutingDiagnostics updated failure context=%1, error=%2").arg(context, description));
    Q_EMIT lastRoutingErrorChanged();
}

void OutputRoutingDiagnostics::clearRoutingFailure(const QString &context) {
    if (!m_message)
        return;
    m_message.reset();
    m_context.reset();
    AudioDebugLogger::log(QStringLiteral("OutputRoutingDiagnostics cleared failure context=%1").arg(context));
    Q_EMIT lastRoutingErrorChanged();
}

} // namespace orlenta::audio
