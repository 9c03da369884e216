#pragma once

#include <optional>

#include <QtCore/QString>

namespace orlenta::speech {

/// A refusal by the service, or a reply that can't be used.
class ElevenLabsError final {
public:
    enum class Kind {
        MissingPermissions,
        RateLimited,
        QuotaExceeded,
        HttpError,
        InvalidURL,
        InvalidResponse,
        Unauthorized
    };

    [[nodiscard]] static ElevenLabsError missingPermissions(std::optional<QString> permission);
    /// `retryAfter` is the delay that the service asked for, in seconds.
    [[nodiscard]] static ElevenLabsError rateLimited(std::optional<double> retryAfter);
    /// `text` is the service's message.
    [[nodiscard]] static ElevenLabsError quotaExceeded(const QString &text);
    /// `suffix` follows the status directly: empty, or ": " and the service's message. `code` is the service's code
    /// for the refusal, such as "voice_not_found".
    [[nodiscard]] static ElevenLabsError httpError(int status, const QString &suffix, const QString &code = {});
    [[nodiscard]] static ElevenLabsError invalidURL();
    [[nodiscard]] static ElevenLabsError invalidResponse();
    [[nodiscard]] static ElevenLabsError unauthorized();

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The name of the permission, the quota message or the suffix of an HTTP error; null if there is none.
    [[nodiscard]] QString text() const { return m_text; }
    /// The HTTP status of an HttpError, otherwise 0.
    [[nodiscard]] int status() const { return m_status; }
    /// The service's code for an HttpError; empty if it gave none.
    [[nodiscard]] QString code() const { return m_code; }
    /// Seconds to wait, for RateLimited if the service named a delay.
    [[nodiscard]] std::optional<double> retryAfter() const { return m_retryAfter; }

    /// The message shown to the user.
    [[nodiscard]] QString description() const;

    friend bool operator==(const ElevenLabsError &, const ElevenLabsError &) = default;

private:
    explicit ElevenLabsError(Kind kind) : m_kind(kind) {}

    Kind m_kind;
    QString m_text;
    int m_status = 0;
    QString m_code;
    std::optional<double> m_retryAfter;
};

} // namespace orlenta::speech
