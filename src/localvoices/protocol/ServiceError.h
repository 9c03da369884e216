#pragma once

#include <optional>

#include <QtCore/QJsonArray>
#include <QtCore/QString>

#include "localvoices/server/HttpExchange.h"

namespace orlenta::localvoices {

/// A refusal in the speech service's own words and shape.
struct ServiceError {
    int status = 400;
    /// The family of the error, such as "validation_error".
    QString type;
    QString code;
    /// The older name of the code, by which most clients tell errors apart.
    QString legacyStatus;
    QString message;
    /// The field that is at fault; may be empty.
    QString param;

    [[nodiscard]] HttpAnswer answer() const;
};

/// The well-known errors by their legacy status, such as "quota_exceeded" or "too_many_concurrent_requests".
[[nodiscard]] std::optional<ServiceError> findServiceError(const QString &legacyStatus);
/// The error that a bare HTTP status is most often sent with.
[[nodiscard]] ServiceError usualServiceError(int httpStatus);

[[nodiscard]] ServiceError invalidApiKey();
[[nodiscard]] ServiceError missingApiKey();
[[nodiscard]] ServiceError voiceNotFound(const QString &voiceId);
[[nodiscard]] ServiceError unknownOutputFormat(const QString &name, const QStringList &known);
[[nodiscard]] ServiceError outputFormatNotAllowed(const QString &name);
[[nodiscard]] ServiceError unknownModel(const QString &modelId);
[[nodiscard]] ServiceError textTooLong(qsizetype characters, qsizetype limit);
[[nodiscard]] ServiceError quotaExceeded(qint64 limit, qint64 remaining, qint64 required);
[[nodiscard]] ServiceError contextNotSupported(const QString &modelId);
[[nodiscard]] ServiceError invalidStability();
[[nodiscard]] ServiceError unknownDictionary(const QString &id);
[[nodiscard]] ServiceError unreadableLexicon();
[[nodiscard]] ServiceError unusableAudio(const QString &complaint);
[[nodiscard]] ServiceError internalError(const QString &message);

/// The answer for a body that breaks the request's schema: one entry for each fault, with `loc`, `msg` and `type`.
[[nodiscard]] HttpAnswer validationAnswer(const QJsonArray &faults);
/// One such entry.
[[nodiscard]] QJsonObject validationFault(const QJsonArray &location, const QString &message, const QString &type);
/// An answer whose `detail` is a bare text.
[[nodiscard]] HttpAnswer plainDetailAnswer(int status, const QString &detail);

} // namespace orlenta::localvoices
