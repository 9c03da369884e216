#include "localvoices/http/HttpConnection.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace orlenta::localvoices {

namespace {

constexpr qint64 longestHead = 16 * 1024;
constexpr qint64 socketBuffer = 256 * 1024;
/// Time limit for receiving a request.
constexpr std::chrono::seconds requestTimeLimit{60};
/// Limits for what a refused client may still send.
constexpr qint64 mostDiscarded = 64 * 1024 * 1024;
constexpr std::chrono::seconds discardTimeLimit{5};

} // namespace

HttpConnection::HttpConnection(QTcpSocket *socket, Receiver receiver)
    : QObject(socket), m_socket(socket), m_receiver(std::move(receiver)) {
    m_socket->setReadBufferSize(socketBuffer);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, m_socket, &QTcpSocket::abort);
    connect(m_socket, &QTcpSocket::readyRead, this, &HttpConnection::read);
    connect(m_socket, &QTcpSocket::disconnected, m_socket, &QObject::deleteLater);
    m_deadline.start(requestTimeLimit);
    read();
}

void HttpConnection::abort() {
    m_socket->abort();
}

void HttpConnection::read() {
    switch (m_stage) {
    case Stage::Head:
        readHead();
        break;
    case Stage::Body:
        readBody();
        break;
    case Stage::Handled:
        m_socket->skip(m_socket->bytesAvailable());
        break;
    case Stage::Refused:
        discard();
        break;
    }
}

void HttpConnection::readHead() {
    m_head += m_socket->read(longestHead - m_head.size());
    const qsizetype end = m_head.indexOf("\r\n\r\n");
    if (end >= 0)
        judge(m_head.left(end), m_head.mid(end + 4));
    else if (m_head.size() >= longestHead)
        refuse(m_receiver.refusal(431), mostDiscarded);
}

void HttpConnection::judge(const QByteArray &head, const QByteArray &rest) {
    const std::optional<IncomingRequest> request = IncomingRequest::fromHead(head);
    const std::optional<qint64> length = request ? request->announcedLength() : std::nullopt;
    if (!length) {
        refuse(m_receiver.refusal(400), mostDiscarded);
        return;
    }
    const qint64 unread = std::max<qint64>(*length - rest.size(), 0);
    const Admission admission = m_receiver.admit(*request);
    if (const auto *refusal = std::get_if<HttpAnswer>(&admission)) {
        refuse(*refusal, unread);
        return;
    }
    if (!request->header("transfer-encoding").isEmpty()) {
        refuse(m_receiver.refusal(411), mostDiscarded);
        return;
    }
    if (*length > std::get<qint64>(admission)) {
        refuse(m_receiver.refusal(413), unread);
        return;
    }
    m_stage = Stage::Body;
    m_request = *request;
    m_bodyLength = *length;
    m_request.body.reserve(m_bodyLength);
    m_request.body += rest.left(m_bodyLength);
    if (unread > 0 && m_request.header("expect").toLower() == "100-continue")
        m_socket->write("HTTP/1.1 100 Continue\r\n\r\n");
    readBody();
}

void HttpConnection::readBody() {
    m_request.body += m_socket->read(m_bodyLength - m_request.body.size());
    if (m_request.body.size() < m_bodyLength)
        return;
    m_stage = Stage::Handled;
    m_deadline.stop();
    m_receiver.handle(std::exchange(m_request, {}), m_socket);
}

void HttpConnection::refuse(const HttpAnswer &answer, qint64 unread) {
    m_stage = Stage::Refused;
    m_head.clear();
    m_unread = unread;
    m_deadline.start(discardTimeLimit);
    m_socket->write(answer.head(answer.body.size()) + answer.body);
    discard();
}

// Closing a socket with unread data resets the connection, and the client may never see the answer. So read and discard
// the rest first, within limits.
void HttpConnection::discard() {
    m_unread -= m_socket->skip(m_socket->bytesAvailable());
    if (m_unread <= 0)
        m_socket->disconnectFromHost();
}

} // namespace orlenta::localvoices
