#include "support/LoopbackServer.h"

#include <algorithm>
#include <optional>

#include <QtNetwork/QHostAddress>

namespace orlenta::test {

namespace {

/// Takes the first complete request out of `buffer`.
std::optional<LoopbackRequest> takeRequest(QByteArray &buffer) {
    const qsizetype headEnd = buffer.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    QList<QByteArray> lines = buffer.left(headEnd).split('\n');
    const QList<QByteArray> requestLine = lines.takeFirst().trimmed().split(' ');
    LoopbackRequest request;
    request.method = requestLine.value(0);
    request.target = requestLine.value(1);
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        request.headers.insert(line.left(colon).trimmed().toLower(), line.mid(colon + 1).trimmed());
    }
    const qsizetype bodyAt = headEnd + 4;
    const qsizetype length = request.headers.value("content-length").toLongLong();
    if (buffer.size() < bodyAt + length)
        return std::nullopt;
    request.body = buffer.mid(bodyAt, length);
    buffer.remove(0, bodyAt + length);
    return request;
}

} // namespace

LoopbackServer::LoopbackServer(std::unique_ptr<QTcpServer> server, const QString &scheme)
    : m_server(std::move(server)), m_scheme(scheme) {
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, [this] {
        while (QTcpSocket *socket = m_server->nextPendingConnection())
            accept(socket);
    });
    if (!m_server->listen(QHostAddress::LocalHost))
        qFatal("no loopback port: %s", qPrintable(m_server->errorString()));
}

QUrl LoopbackServer::url() const {
    return QUrl(QStringLiteral("%1://127.0.0.1:%2").arg(m_scheme).arg(m_server->serverPort()));
}

QList<LoopbackRequest> LoopbackServer::requests(const QByteArray &target) const {
    QList<LoopbackRequest> matching;
    std::copy_if(m_requests.begin(), m_requests.end(), std::back_inserter(matching),
                 [&target](const LoopbackRequest &request) { return request.target.startsWith(target); });
    return matching;
}

void LoopbackServer::handle(const QByteArray &target, Handler handler) {
    m_handlers.prepend({target, std::move(handler)});
}

void LoopbackServer::answer(const QByteArray &target, const QByteArray &reply) {
    answerInTurn(target, {reply});
}

void LoopbackServer::answerInTurn(const QByteArray &target, QList<QByteArray> replies) {
    const auto left = std::make_shared<QList<QByteArray>>(std::move(replies));
    handle(target, [left](const LoopbackRequest &, QTcpSocket &socket) {
        socket.write(left->size() > 1 ? left->takeFirst() : left->first());
        socket.disconnectFromHost();
    });
}

QByteArray LoopbackServer::reply(int status, const QByteArray &body, const QByteArray &contentType,
                                 const QList<QByteArray> &headers) {
    QByteArray head = "HTTP/1.1 " + QByteArray::number(status) + " Status\r\nContent-Type: " + contentType +
                      "\r\nContent-Length: " + QByteArray::number(body.size()) + "\r\nConnection: close\r\n";
    for (const QByteArray &header : headers)
        head += header + "\r\n";
    return head + "\r\n" + body;
}

void LoopbackServer::accept(QTcpSocket *socket) {
    const auto buffer = std::make_shared<QByteArray>();
    connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    const auto receive = [this, socket, buffer] {
        *buffer += socket->readAll();
        while (const auto request = takeRequest(*buffer))
            dispatch(*request, *socket);
    };
    connect(socket, &QTcpSocket::readyRead, this, receive);
    receive();
}

void LoopbackServer::dispatch(const LoopbackRequest &request, QTcpSocket &socket) {
    m_requests.append(request);
    for (const auto &[target, handler] : std::as_const(m_handlers)) {
        if (request.target.startsWith(target)) {
            const Handler call = handler;
            call(request, socket);
            return;
        }
    }
    socket.write(reply(404, R"({"detail":"no such address"})"));
    socket.disconnectFromHost();
}

} // namespace orlenta::test
