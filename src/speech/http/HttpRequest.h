#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "speech/http/Cancellation.h"
#include "speech/http/ReplyFile.h"
#include "speech/http/ServiceAccess.h"

namespace orlenta::speech {

class MultipartBody;

/// One request to the service. Not an aggregate, which must not be a temporary in an awaiting expression.
struct HttpRequest {
    enum class Method { Get, Post };
    /// `path` follows the endpoint and may end in a query.
    [[nodiscard]] static HttpRequest get(const ServiceAccess &access, const QString &path);
    [[nodiscard]] static HttpRequest postJson(const ServiceAccess &access, const QString &path, const QByteArray &json);
    [[nodiscard]] static HttpRequest postForm(const ServiceAccess &access, const QString &path,
                                              const MultipartBody &form);

    /// The key is sent in the header xi-api-key and nowhere else.
    ServiceAccess access;
    QUrl url;
    Method method = Method::Get;
    QByteArray contentType;
    QByteArray body;
    /// Receives an accepted reply of up to 1 GiB. Without it the reply is kept in memory, up to 8 MiB.
    ReplyFilePtr replyFile;
    CancellationPtr cancellation;

private:
    HttpRequest(const ServiceAccess &forAccess, const QString &path);
};

/// A complete reply, whatever its status.
struct HttpReply {
    int status = 0;
    /// The header Retry-After; null if absent.
    QByteArray retryAfter;
    /// The header Location; null if absent.
    QByteArray location;
    QByteArray contentType;
    /// Empty if the request's file received the reply.
    QByteArray body;

    [[nodiscard]] bool isAccepted() const { return status >= 200 && status <= 299; }
};

} // namespace orlenta::speech
