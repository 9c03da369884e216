#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include "speech/http/Cancellation.h"
#include "speech/http/ReplyFile.h"
#include "speech/http/ServiceAccess.h"

namespace orlenta::speech {

class MultipartBody;

/// One request to the service. Made by its functions: an aggregate must not be a temporary in an awaiting expression.
struct HttpRequest {
    enum class Method { Get, Post };
    /// `path` follows the endpoint and may end in a query.
    [[nodiscard]] static HttpRequest get(const ServiceAccess &access, const QString &path);
    [[nodiscard]] static HttpRequest postJson(const ServiceAccess &access, const QString &path, const QByteArray &json);
    [[nodiscard]] static HttpRequest postForm(const ServiceAccess &access, const QString &path,
                                              const MultipartBody &form);

    /// Its key goes out as the header xi-api-key, and nowhere else.
    ServiceAccess access;
    QUrl url;
    Method method = Method::Get;
    QByteArray contentType;
    QByteArray body;
    /// Where an accepted reply goes, up to 1 GiB of it; null for one that is read from memory, up to 8 MiB.
    ReplyFilePtr replyFile;
    CancellationPtr cancellation;

private:
    HttpRequest(const ServiceAccess &forAccess, const QString &path);
};

/// A reply that arrived whole, whatever its status.
struct HttpReply {
    int status = 0;
    /// The header Retry-After; null when there was none.
    QByteArray retryAfter;
    /// The header Location; null when there was none.
    QByteArray location;
    QByteArray contentType;
    /// Empty when the reply went into the request's file.
    QByteArray body;

    [[nodiscard]] bool isAccepted() const { return status >= 200 && status <= 299; }
};

} // namespace orlenta::speech
