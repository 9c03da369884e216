#pragma once

#include <functional>

#include <QtCore/QPointer>
#include <QtNetwork/QTcpSocket>

#include "localvoices/http/HttpAnswer.h"
#include "localvoices/server/FaultScript.h"

namespace orlenta::localvoices {

/// Sends one answer on one connection and closes it, applying the fault that was ordered for the request. It isn't an
/// error if the client has disconnected. Main thread.
class Delivery final {
public:
    Delivery(QTcpSocket *socket, Fault fault);

    [[nodiscard]] bool isClientThere() const;
    [[nodiscard]] QTcpSocket *socket() const { return m_socket; }
    [[nodiscard]] FaultKind fault() const { return m_fault.kind; }

    /// Carries out a fault that replaces the answer. False when the request still needs an answer.
    [[nodiscard]] bool answerByFault() const;
    /// Sends the answer; late or truncated if the fault says so.
    void send(const HttpAnswer &answer) const;

private:
    void sendNow(const HttpAnswer &answer) const;
    void sendZeros(qint64 count) const;

    // A socket deletes itself when its client disconnects.
    QPointer<QTcpSocket> m_socket;
    Fault m_fault;
};

} // namespace orlenta::localvoices
