#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>

#include "localvoices/http/IncomingRequest.h"

namespace orlenta::localvoices {

/// What is sent back for one request.
struct HttpAnswer {
    int status = 200;
    QByteArray contentType = "application/json";
    QList<HttpHeader> headers;
    QByteArray body;

    /// The status line and all headers. `bodyLength` bytes are announced, which may be more than `body` holds.
    [[nodiscard]] QByteArray head(qint64 bodyLength) const;
};

} // namespace orlenta::localvoices
