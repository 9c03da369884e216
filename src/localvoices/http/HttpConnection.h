#pragma once

#include <functional>
#include <variant>

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include "localvoices/http/HttpAnswer.h"
#include "localvoices/http/IncomingRequest.h"

namespace orlenta::localvoices {

/// Reads one request from a connection. The head alone decides whether the request is admitted, so the body of a
/// refused request is never kept in memory. Chunked bodies are refused with 411. Main thread.
class HttpConnection final : public QObject {
    Q_OBJECT
public:
    /// The limit for the body in bytes, or the refusal.
    using Admission = std::variant<qint64, HttpAnswer>;
    struct Receiver {
        /// Decides on a request whose body has not been read.
        std::function<Admission(const IncomingRequest &)> admit;
        /// Receives the complete request, and answers and closes the socket.
        std::function<void(const IncomingRequest &, QTcpSocket *)> handle;
        /// Provides the answer to a malformed or oversized request.
        std::function<HttpAnswer(int status)> refusal;
    };

    /// Owned by the socket, which deletes itself when disconnected.
    HttpConnection(QTcpSocket *socket, Receiver receiver);

    [[nodiscard]] bool isWaitingForHead() const { return m_stage == Stage::Head; }
    /// Drops the connection without an answer.
    void abort();

private:
    enum class Stage { Head, Body, Handled, Refused };

    void read();
    void readHead();
    void judge(const QByteArray &head, const QByteArray &rest);
    void readBody();
    void refuse(const HttpAnswer &answer, qint64 unread);
    void discard();

    QTcpSocket *m_socket;
    Receiver m_receiver;
    Stage m_stage = Stage::Head;
    QByteArray m_head;
    IncomingRequest m_request;
    qint64 m_bodyLength = 0;
    /// Bytes to discard before a refused connection is closed.
    qint64 m_unread = 0;
    QTimer m_deadline;
};

} // namespace orlenta::localvoices
