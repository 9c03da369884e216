#pragma once

#include <functional>
#include <variant>

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtNetwork/QTcpSocket>

#include "localvoices/http/HttpAnswer.h"
#include "localvoices/http/IncomingRequest.h"

namespace orlenta::localvoices {

/// Reads the one request of a connection. A request is judged by its head, so a body that won't be used is never kept
/// in memory. Bodies come with their length; chunked ones are refused with 411. Main thread.
class HttpConnection final : public QObject {
    Q_OBJECT
public:
    /// The longest body that is taken, in bytes, or the refusal.
    using Admission = std::variant<qint64, HttpAnswer>;
    struct Receiver {
        /// Judges a request that has no body yet.
        std::function<Admission(const IncomingRequest &)> admit;
        /// Takes the whole request. The answer goes to the socket, which it ends.
        std::function<void(const IncomingRequest &, QTcpSocket *)> handle;
        /// Words the answer for a request that breaks HTTP's rules or a limit.
        std::function<HttpAnswer(int status)> refusal;
    };

    /// Belongs to the socket, which deletes itself once it is disconnected.
    HttpConnection(QTcpSocket *socket, Receiver receiver);

    [[nodiscard]] bool isWaitingForHead() const { return m_stage == Stage::Head; }
    /// Ends the connection without an answer and deletes it later.
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
    /// What a refused client may still send before it is cut off.
    qint64 m_unread = 0;
    QTimer m_deadline;
};

} // namespace orlenta::localvoices
