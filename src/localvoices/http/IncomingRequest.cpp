#include "localvoices/http/IncomingRequest.h"

#include <algorithm>

#include <QtCore/QUrl>

namespace orlenta::localvoices {

namespace {

/// Whether this is a token (RFC 9110), as methods and header names are.
bool isToken(const QByteArray &text) {
    const auto isTokenCharacter = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               QByteArrayView("!#$%&'*+-.^_`|~").contains(c);
    };
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), isTokenCharacter);
}

std::optional<HttpHeader> readHeader(const QByteArray &line) {
    const qsizetype colon = line.indexOf(':');
    const QByteArray name = line.left(std::max<qsizetype>(colon, 0));
    if (!isToken(name))
        return std::nullopt;
    return HttpHeader{name, line.mid(colon + 1).trimmed()};
}

QList<QByteArray> linesOf(const QByteArray &head) {
    QList<QByteArray> lines = head.split('\n');
    for (QByteArray &line : lines)
        if (line.endsWith('\r'))
            line.chop(1);
    return lines;
}

} // namespace

std::optional<IncomingRequest> IncomingRequest::fromHead(const QByteArray &head) {
    const QList<QByteArray> lines = linesOf(head);
    const QList<QByteArray> words = lines.first().split(' ');
    if (words.size() != 3 || !isToken(words.at(0)) || !words.at(2).startsWith("HTTP/1."))
        return std::nullopt;
    const QUrl target = QUrl::fromEncoded(words.at(1), QUrl::StrictMode);
    // A leading double slash would make the target name a host.
    if (!target.isValid() || !target.isRelative() || !words.at(1).startsWith('/') || words.at(1).startsWith("//"))
        return std::nullopt;
    IncomingRequest request{words.at(0), target.path(QUrl::FullyDecoded), QUrlQuery(target), {}, {}};
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const std::optional<HttpHeader> header = readHeader(lines.at(i));
        if (!header)
            return std::nullopt;
        request.headers.append(*header);
    }
    return request;
}

QByteArray IncomingRequest::header(const QByteArray &name) const {
    for (const HttpHeader &header : headers)
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return header.second;
    return {};
}

std::optional<qint64> IncomingRequest::announcedLength() const {
    std::optional<qint64> length;
    for (const HttpHeader &header : headers) {
        if (header.first.compare("content-length", Qt::CaseInsensitive) != 0)
            continue;
        const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
        bool isNumber = false;
        const qint64 announced = header.second.toLongLong(&isNumber);
        // toLongLong also accepts a sign.
        if (!isNumber || !isDigit(header.second.front()) || length.value_or(announced) != announced)
            return std::nullopt;
        length = announced;
    }
    return length.value_or(0);
}

} // namespace orlenta::localvoices
