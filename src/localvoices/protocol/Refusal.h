#pragma once

#include <optional>

#include <QtCore/QJsonArray>
#include <QtCore/QString>

#include "localvoices/http/HttpAnswer.h"

namespace orlenta::localvoices {

/// A refusal in the speech service's own words and shape.
struct Refusal {
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
[[nodiscard]] std::optional<Refusal> findRefusal(const QString &legacyStatus);
/// The error that a bare HTTP status is most often sent with.
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

/// The answer for a body that breaks the request's schema: one entry for each fault, with `loc`, `msg` and `type`.
[[nodiscard]] HttpAnswer validationAnswer(const QJsonArray &faults);
/// One such entry.
[[nodiscard]] QJsonObject validationFault(const QJsonArray &location, const QString &message, const QString &type);
/// The answer for a field that isn't there.
[[nodiscard]] HttpAnswer missingField(const QString &key);
/// The answer for a form that holds more parts than it may.
[[nodiscard]] HttpAnswer tooManyParts(std::size_t most);
/// An answer whose `detail` is a bare text.
[[nodiscard]] HttpAnswer plainDetailAnswer(int status, const QString &detail);

} // namespace orlenta::localvoices
