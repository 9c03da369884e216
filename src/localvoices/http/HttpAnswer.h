#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "localvoices/http/IncomingRequest.h"

namespace orlenta::localvoices {

/// The response to one request.
struct HttpAnswer {
    int status = 200;
    QByteArray contentType = "application/json";
    QList<HttpHeader> headers;
    QByteArray body;

    /// The status line and all headers. Content-Length is `bodyLength`, which may exceed the size of `body`.
    [[nodiscard]] QByteArray head(qint64 bodyLength) const;
};

} // namespace orlenta::localvoices
