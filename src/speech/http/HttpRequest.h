#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "speech/http/Cancellation.h"

namespace orlenta::speech {

/// One keyed request. It has constructors because an aggregate must not be a temporary in an awaiting expression.
struct HttpRequest {
    enum class Method { Get, Post };
    /// What comes back, which decides how much of it is accepted: 8 MiB of JSON, 64 MiB of audio.
    enum class ReplyKind { Json, Audio };

    HttpRequest(const QUrl &target, const QString &key) : url(target), apiKey(key) {}
    HttpRequest(const QUrl &target, const QString &key, const QByteArray &type, const QByteArray &content)
        : url(target), apiKey(key), method(Method::Post), contentType(type), body(content) {}

    QUrl url;
    /// Goes out as the header xi-api-key, and nowhere else.
    QString apiKey;
    Method method = Method::Get;
    QByteArray contentType;
    QByteArray body;
    ReplyKind replyKind = ReplyKind::Json;
    CancellationPtr cancellation;
};

/// A reply that came in whole, whatever its status says.
struct HttpReply {
    int status = 0;
    /// The header Retry-After; null when there was none.
    QByteArray retryAfter;
    /// The header Location; null when there was none.
    QByteArray location;
    QByteArray body;
};

} // namespace orlenta::speech
