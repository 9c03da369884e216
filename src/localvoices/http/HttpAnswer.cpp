#include "localvoices/http/HttpAnswer.h"

namespace orlenta::localvoices {

namespace {

QByteArray reasonPhrase(int status) {
    switch (status) {
    case 200:
        return "OK";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 402:
        return "Payment Required";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 405:
        return "Method Not Allowed";
    case 411:
        return "Length Required";
    case 413:
        return "Content Too Large";
    case 422:
        return "Unprocessable Entity";
    case 429:
        return "Too Many Requests";
    case 431:
        return "Request Header Fields Too Large";
    default:
        return status < 500 ? "Refused" : "Internal Server Error";
    }
}

} // namespace

QByteArray HttpAnswer::head(qint64 bodyLength) const {
    QByteArray text = "HTTP/1.1 " + QByteArray::number(status) + ' ' + reasonPhrase(status) + "\r\n";
    text += "Content-Type: " + contentType + "\r\nContent-Length: " + QByteArray::number(bodyLength) + "\r\n";
    for (const HttpHeader &header : headers)
        text += header.first + ": " + header.second + "\r\n";
    // Answers may finish in a different order than requests arrive, so each connection carries only one.
    return text + "Connection: close\r\n\r\n";
}

} // namespace orlenta::localvoices
