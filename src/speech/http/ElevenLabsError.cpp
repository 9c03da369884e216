#include "speech/http/ElevenLabsError.h"

#include "speech/account/ServiceAddresses.h"

namespace orlenta::speech {

ElevenLabsError ElevenLabsError::missingPermissions(std::optional<QString> permission) {
    ElevenLabsError error(Kind::MissingPermissions);
    error.m_text = permission.value_or(QString());
    return error;
}

ElevenLabsError ElevenLabsError::rateLimited(std::optional<double> retryAfter) {
    ElevenLabsError error(Kind::RateLimited);
    error.m_retryAfter = retryAfter;
    return error;
}

ElevenLabsError ElevenLabsError::quotaExceeded(const QString &text) {
    ElevenLabsError error(Kind::QuotaExceeded);
    error.m_text = text;
    return error;
}

ElevenLabsError ElevenLabsError::httpError(int status, const QString &suffix, const QString &code) {
    ElevenLabsError error(Kind::HttpError);
    error.m_status = status;
    error.m_code = code;
    error.m_text = suffix;
    return error;
}

ElevenLabsError ElevenLabsError::invalidURL() {
    return ElevenLabsError(Kind::InvalidURL);
}

ElevenLabsError ElevenLabsError::invalidResponse() {
    return ElevenLabsError(Kind::InvalidResponse);
}

ElevenLabsError ElevenLabsError::unauthorized() {
    return ElevenLabsError(Kind::Unauthorized);
}

QString ElevenLabsError::description() const {
    switch (m_kind) {
    case Kind::MissingPermissions: {
        const QString missing = m_text.isEmpty()
                                    ? QStringLiteral("This API key is missing a permission")
                                    : QStringLiteral("This API key is missing the %1 permission").arg(m_text);
        return missing + QStringLiteral(". Edit the key at ") + keySettingsAddress() +
               QStringLiteral(" and switch on the five permissions listed at ") + connectGuideAddress() +
               QStringLiteral(".");
    }
    case Kind::RateLimited:
        return QStringLiteral(
                   "ElevenLabs is busy right now\n\nThis request was rate-limited by ElevenLabs. Please wait a "
                   "moment and try again. If this keeps happening, your account may be hitting concurrency "
                   "limits. Check your plan at ") +
               planAddress() + QStringLiteral(".");
    case Kind::QuotaExceeded:
        return m_text;
    case Kind::HttpError:
        return QStringLiteral("HTTP error %1").arg(m_status) + m_text;
    case Kind::InvalidURL:
        return QStringLiteral("Invalid URL");
    case Kind::InvalidResponse:
        return QStringLiteral("Invalid response from server");
    case Kind::Unauthorized:
        return QStringLiteral("Invalid API key");
    }
    Q_UNREACHABLE();
}

} // namespace orlenta::speech
