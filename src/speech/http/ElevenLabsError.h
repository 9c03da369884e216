#pragma once

#include <optional>

#include <QtCore/QString>

namespace orlenta::speech {

/// What the service refused, or sent that can't be used.
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
    /// `retryAfter` is in seconds, as the service asked for.
    [[nodiscard]] static ElevenLabsError rateLimited(std::optional<double> retryAfter);
    /// `text` is the service's own wording.
    [[nodiscard]] static ElevenLabsError quotaExceeded(const QString &text);
    /// `suffix` follows the status directly: empty, or ": " and the service's wording. `code` is the service's word for
    /// the refusal, such as "voice_not_found".
    [[nodiscard]] static ElevenLabsError httpError(int status, const QString &suffix, const QString &code = {});
    [[nodiscard]] static ElevenLabsError invalidURL();
    [[nodiscard]] static ElevenLabsError invalidResponse();
    [[nodiscard]] static ElevenLabsError unauthorized();

    [[nodiscard]] Kind kind() const { return m_kind; }
    /// The permission's name, the quota's wording or the suffix of an HTTP error; null where there is none.
    [[nodiscard]] QString text() const { return m_text; }
    /// The HTTP status of an HttpError, otherwise 0.
    [[nodiscard]] int status() const { return m_status; }
    /// The service's word for an HttpError; empty when it gave none.
    [[nodiscard]] QString code() const { return m_code; }
    /// Seconds to wait, for RateLimited when the service named them.
    [[nodiscard]] std::optional<double> retryAfter() const { return m_retryAfter; }

    /// The sentence that the user reads.
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
