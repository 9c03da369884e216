#pragma once

#include <optional>

#include <QtCore/QJsonArray>
#include <QtCore/QString>

#include "localvoices/http/HttpAnswer.h"

namespace orlenta::localvoices {

/// An error response worded and structured like the speech service's own.
struct Refusal {
    int status = 400;
    /// The category, such as "validation_error".
    QString type;
    QString code;
    /// The older name of the code, which most clients check.
    QString legacyStatus;
    QString message;
    /// The offending field; may be empty.
    QString param;

    [[nodiscard]] HttpAnswer answer() const;
};

/// Looks up a well-known error by legacy status, such as "quota_exceeded" or "too_many_concurrent_requests".
[[nodiscard]] std::optional<Refusal> findRefusal(const QString &legacyStatus);
/// The most common error with this HTTP status.
[[nodiscard]] Refusal usualRefusal(int httpStatus);

[[nodiscard]] Refusal invalidApiKey();
[[nodiscard]] Refusal missingApiKey();
[[nodiscard]] Refusal voiceNotFound(const QString &voiceId);
[[nodiscard]] Refusal unknownOutputFormat(const QString &name, const QStringList &known);
[[nodiscard]] Refusal outputFormatNotAllowed(const QString &name);
[[nodiscard]] Refusal unknownModel(const QString &modelId);
[[nodiscard]] Refusal textTooLong(qsizetype characters, qsizetype limit);
[[nodiscard]] Refusal quotaExceeded(qint64 limit, qint64 remaining, qint64 required);
[[nodiscard]] Refusal contextNotSupported(const QString &modelId);
[[nodiscard]] Refusal invalidStability();
[[nodiscard]] Refusal unknownDictionary(const QString &id);
[[nodiscard]] Refusal unreadableLexicon();
[[nodiscard]] Refusal speechTooLong(const QString &complaint);
[[nodiscard]] Refusal unusableAudio(const QString &complaint);
[[nodiscard]] Refusal internalError(const QString &message);

/// The answer to a body that violates the schema: one entry per fault, with `loc`, `msg` and `type`.
[[nodiscard]] HttpAnswer validationAnswer(const QJsonArray &faults);
/// Makes one such entry.
[[nodiscard]] QJsonObject validationFault(const QJsonArray &location, const QString &message, const QString &type);
/// The answer when a required field is missing.
[[nodiscard]] HttpAnswer missingField(const QString &key);
/// The answer to a form with too many parts.
[[nodiscard]] HttpAnswer tooManyParts(std::size_t most);
/// An answer whose `detail` is a plain string.
[[nodiscard]] HttpAnswer plainDetailAnswer(int status, const QString &detail);

} // namespace orlenta::localvoices
