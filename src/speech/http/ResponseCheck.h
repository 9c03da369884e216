#pragma once

#include <chrono>
#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include "speech/http/ElevenLabsError.h"
#include "speech/http/HttpRequest.h"

/// What a reply of the service means: its status and the wording in its body.
namespace orlenta::speech {

/// The error that `reply` stands for; none for a status of 200 to 299. `now` is what a Retry-After date counts from.
[[nodiscard]] std::optional<ElevenLabsError> checkResponse(const HttpReply &reply,
                                                           std::chrono::system_clock::time_point now);

/// Seconds from a Retry-After header: a number, or an HTTP date (RFC 9110, section 10.2.3; also fractions, which the
/// RFC doesn't have). Never negative; none for a text that is neither.
[[nodiscard]] std::optional<double> parseRetryAfter(const QByteArray &header,
                                                    std::chrono::system_clock::time_point now);

/// The permission that a refusal's wording names: what follows "missing the permission ".
[[nodiscard]] std::optional<QString> permissionName(const QString &message);

} // namespace orlenta::speech
