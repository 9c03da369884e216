#pragma once

#include <optional>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QUrlQuery>

namespace orlenta::localvoices {

using HttpHeader = QPair<QByteArray, QByteArray>;

/// One request as a client sent it.
struct IncomingRequest {
    QByteArray method;
    /// Percent-decoded, with the leading slash.
    QString path;
    QUrlQuery query;
    QList<HttpHeader> headers;
    QByteArray body;

    /// Reads the request line and the headers, without the empty line that ends them; none when they aren't HTTP/1's.
    [[nodiscard]] static std::optional<IncomingRequest> fromHead(const QByteArray &head);

    /// The header's value by its name in any case; empty when it wasn't sent.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
    /// The length of the body in bytes as the headers announce it, 0 when they don't; none when they contradict
    /// themselves or hold no number.
    [[nodiscard]] std::optional<qint64> announcedLength() const;
};

} // namespace orlenta::localvoices
