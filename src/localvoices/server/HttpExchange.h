#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QUrlQuery>

class QHttpServerRequest;

namespace orlenta::localvoices {

using HttpHeader = QPair<QByteArray, QByteArray>;

/// A request, copied out of the server's own object so that it may be answered later.
struct HttpRequest {
    QByteArray method;
    /// Decoded, with the leading slash.
    QString path;
    QUrlQuery query;
    QList<HttpHeader> headers;
    QByteArray body;

    [[nodiscard]] static HttpRequest from(const QHttpServerRequest &request);
    /// The header's value by its name in any case; empty when it wasn't sent.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

struct HttpAnswer {
    int status = 200;
    QByteArray contentType = "application/json";
    QList<HttpHeader> headers;
    QByteArray body;

    /// The status line and all headers, with the length of a body that may be longer than `body`.
    [[nodiscard]] QByteArray head(qint64 bodyLength) const;
};

} // namespace orlenta::localvoices
