#pragma once

#include <functional>
#include <memory>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QUrl>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>

namespace orlenta::test {

/// A request as received, with lower-case header names.
struct LoopbackRequest {
    QByteArray method;
    QByteArray target;
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
};

/// An HTTP/1.1 server on a free port of 127.0.0.1, in the thread that created it. Sends the exact bytes that a test
/// gives it, so it can violate HTTP in every way that a network does.
class LoopbackServer final : public QObject {
public:
    using Handler = std::function<void(const LoopbackRequest &, QTcpSocket &)>;

    /// `server` must not be listening yet. It may be a QSslServer.
    explicit LoopbackServer(std::unique_ptr<QTcpServer> server = std::make_unique<QTcpServer>(),
                            const QString &scheme = QStringLiteral("http"));

    [[nodiscard]] QUrl url() const;
    /// All requests so far.
    [[nodiscard]] const QList<LoopbackRequest> &requests() const { return m_requests; }
    /// The requests whose target starts with `target`.
    [[nodiscard]] QList<LoopbackRequest> requests(const QByteArray &target) const;

    /// Handles requests whose target starts with `target`. The latest matching handler wins.
    void handle(const QByteArray &target, Handler handler);
    /// Sends `reply` to each request whose target starts with `target`.
    void answer(const QByteArray &target, const QByteArray &reply);
    /// Sends the replies in turn and then repeats the last one.
    void answerInTurn(const QByteArray &target, QList<QByteArray> replies);

    /// A complete reply with Content-Length and Connection: close. `headers` are complete lines.
    [[nodiscard]] static QByteArray reply(int status, const QByteArray &body,
                                          const QByteArray &contentType = "application/json",
                                          const QList<QByteArray> &headers = {});
    [[nodiscard]] static QByteArray json(const QByteArray &body) { return reply(200, body); }

private:
    void accept(QTcpSocket *socket);
    void dispatch(const LoopbackRequest &request, QTcpSocket &socket);

    std::unique_ptr<QTcpServer> m_server;
    QString m_scheme;
    QList<std::pair<QByteArray, Handler>> m_handlers;
    QList<LoopbackRequest> m_requests;
};

} // namespace orlenta::test
