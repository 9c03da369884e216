#pragma once

#include <functional>

#include <QtCore/QPointer>
#include <QtNetwork/QTcpSocket>

#include "localvoices/http/HttpAnswer.h"
#include "localvoices/server/FaultScript.h"

namespace orlenta::localvoices {

/// Puts one answer on one connection and closes it, with the fault that was ordered for the request. A client that has
/// gone meanwhile is no error. Main thread.
class Delivery final {
public:
    Delivery(QTcpSocket *socket, Fault fault);

    [[nodiscard]] bool isClientThere() const;
    [[nodiscard]] QTcpSocket *socket() const { return m_socket; }
    [[nodiscard]] FaultKind fault() const { return m_fault.kind; }

    /// Whether the fault takes the place of the answer. If so it has been dealt with.
    [[nodiscard]] bool answerByFault() const;
    /// Sends the answer, late or in part when the fault says so.
    void send(const HttpAnswer &answer) const;

private:
    void sendNow(const HttpAnswer &answer) const;
    void sendZeros(qint64 count) const;

    // The server deletes a connection that its client has closed.
    QPointer<QTcpSocket> m_socket;
    Fault m_fault;
};

} // namespace orlenta::localvoices
