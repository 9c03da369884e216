#include "localvoices/server/Delivery.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include <QtCore/QTimer>

#include "localvoices/protocol/Refusal.h"

namespace orlenta::localvoices {

using namespace Qt::StringLiterals;

namespace {

HttpAnswer statusFaultAnswer(const Fault &fault) {
    if (fault.argument.isEmpty())
        return usualRefusal(fault.status).answer();
    if (std::optional<Refusal> error = findRefusal(fault.argument)) {
        error->status = fault.status;
        return error->answer();
    }
    if (fault.status != 429)
        return plainDetailAnswer(fault.status, fault.argument);
    HttpAnswer answer = usualRefusal(429).answer();
    answer.headers.append({"Retry-After", fault.argument.toLatin1()});
    return answer;
}

constexpr char portalPage[] = "<!DOCTYPE html>\n<html><head><title>Welcome</title></head>"
                              "<body><h1>Welcome</h1><p>Sign in to use this network.</p></body></html>\n";

} // namespace

Delivery::Delivery(QTcpSocket *socket, Fault fault) : m_socket(socket), m_fault(std::move(fault)) {}

bool Delivery::isClientThere() const {
    return m_socket != nullptr && m_socket->state() == QAbstractSocket::ConnectedState;
}

bool Delivery::answerByFault() const {
    switch (m_fault.kind) {
    case FaultKind::None:
    case FaultKind::Slow:
    case FaultKind::Cut:
    case FaultKind::Stability:
        return false;
    case FaultKind::Status:
        sendNow(statusFaultAnswer(m_fault));
        return true;
    case FaultKind::Reset:
        m_socket->abort();
        return true;
    case FaultKind::Stall:
        return true;
    case FaultKind::Huge:
        sendZeros(m_fault.amount);
        return true;
    case FaultKind::Empty:
        sendNow({});
        return true;
    case FaultKind::Garbage:
        sendNow({200, "application/octet-stream", {}, QByteArray("\x00\x01\xFFneither audio nor JSON\x80\x00", 27)});
        return true;
    case FaultKind::Portal:
        sendNow({200, "text/html; charset=utf-8", {}, portalPage});
        return true;
    }
    return false;
}

void Delivery::send(const HttpAnswer &answer) const {
    if (m_fault.kind != FaultKind::Slow || !isClientThere()) {
        sendNow(answer);
        return;
    }
    Delivery later = *this;
    later.m_fault = {};
    QTimer::singleShot(std::chrono::milliseconds(m_fault.amount), m_socket.data(),
                       [later, answer] { later.sendNow(answer); });
}

void Delivery::sendNow(const HttpAnswer &answer) const {
    if (!isClientThere())
        return;
    m_socket->write(answer.head(answer.body.size()));
    m_socket->write(m_fault.kind == FaultKind::Cut ? answer.body.left(answer.body.size() / 2) : answer.body);
    m_socket->disconnectFromHost();
}

void Delivery::sendZeros(qint64 count) const {
    m_socket->write(HttpAnswer{200, "application/octet-stream", {}, {}}.head(count));
    QTcpSocket *socket = m_socket;
    const auto left = std::make_shared<qint64>(count);
    const auto more = [socket, left] {
        constexpr qint64 block = 1 << 20;
        while (*left > 0 && socket->bytesToWrite() < block) {
            const qint64 size = std::min(block, *left);
            socket->write(QByteArray(size, '\0'));
            *left -= size;
        }
        if (*left == 0 && std::exchange(*left, -1) == 0)
            socket->disconnectFromHost();
    };
    QObject::connect(socket, &QTcpSocket::bytesWritten, socket, more);
    more();
}

} // namespace orlenta::localvoices
