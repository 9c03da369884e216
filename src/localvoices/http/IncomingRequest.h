#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QUrlQuery>

namespace orlenta::localvoices {

using HttpHeader = QPair<QByteArray, QByteArray>;

/// A request as received from a client.
struct IncomingRequest {
    QByteArray method;
    /// Percent-decoded, with a leading slash.
    QString path;
    QUrlQuery query;
    QList<HttpHeader> headers;
    QByteArray body;

    /// Parses the request line and headers, without the blank line after them. None if they aren't valid HTTP/1.
    [[nodiscard]] static std::optional<IncomingRequest> fromHead(const QByteArray &head);

    /// The value of a header; names are case-insensitive. Empty if absent.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
    /// Content-Length in bytes, 0 if absent. None if it is malformed or contradicts itself.
    [[nodiscard]] std::optional<qint64> announcedLength() const;
};

} // namespace orlenta::localvoices
