#pragma once

#include <chrono>
#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "speech/http/ElevenLabsError.h"
#include "speech/http/HttpRequest.h"

/// Reads the meaning of a reply from its status and the message in its body.
namespace orlenta::speech {

/// The error that `reply` stands for; none for a status of 200 to 299. A Retry-After date is relative to `now`.
[[nodiscard]] std::optional<ElevenLabsError> checkResponse(const HttpReply &reply,
                                                           std::chrono::system_clock::time_point now);

/// Seconds from a Retry-After header: a number or an HTTP date (RFC 9110, section 10.2.3), and also a fraction, which
/// the RFC doesn't allow. Never negative; none for any other text.
[[nodiscard]] std::optional<double> parseRetryAfter(const QByteArray &header,
                                                    std::chrono::system_clock::time_point now);

/// The permission named in a refusal's message, after "missing the permission ".
[[nodiscard]] std::optional<QString> permissionName(const QString &message);

} // namespace orlenta::speech
