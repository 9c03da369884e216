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

/// A request as it arrived, header names in lower case.
struct LoopbackRequest {
    QByteArray method;
    QByteArray target;
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
};

/// An HTTP/1.1 server on a free port of 127.0.0.1, in the thread that made it. It writes what a test tells it to, byte
/// for byte, so that it can break the rules of HTTP in every way a network does.
class LoopbackServer final : public QObject {
public:
    using Handler = std::function<void(const LoopbackRequest &, QTcpSocket &)>;

    /// `server` is one that isn't listening yet, a QSslServer say.
    explicit LoopbackServer(std::unique_ptr<QTcpServer> server = std::make_unique<QTcpServer>(),
                            const QString &scheme = QStringLiteral("http"));

    [[nodiscard]] QUrl url() const;
    /// Every request so far.
    [[nodiscard]] const QList<LoopbackRequest> &requests() const { return m_requests; }
    /// The requests whose target begins with `target`.
    [[nodiscard]] QList<LoopbackRequest> requests(const QByteArray &target) const;

    /// Handles the requests whose target begins with `target`; the latest matching handler wins.
    void handle(const QByteArray &target, Handler handler);
    /// Writes `reply` for each request whose target begins with `target`.
    void answer(const QByteArray &target, const QByteArray &reply);
    /// Writes the replies one after another, the last one again and again.
    void answerInTurn(const QByteArray &target, QList<QByteArray> replies);

    /// A complete reply with its length; the connection closes after it. `headers` are whole lines.
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
