#include "audio/recording/MicrophonePermission.h"

#include <utility>

#include "audio/devices/SoundServer.h"

namespace orlenta::audio {

MicrophonePermission::MicrophonePermission(const SoundServer &server, QObject *parent)
    : QObject(parent), m_server(server), m_announced(authorizationStatus()) {
    connect(&server, &SoundServer::stateChanged, this, [this] {
        m_isRefused = false;
        update();
        answerRequests();
    });
    connect(&server, &SoundServer::devicesChanged, this, &MicrophonePermission::update);
}

MicrophoneAuthorization MicrophonePermission::authorizationStatus() const {
    if (m_server.state() != SoundServer::State::Ready)
        return MicrophoneAuthorization::NotDetermined;
    if (m_isRefused)
        return MicrophoneAuthorization::Denied;
    return m_server.devices().inputs.isEmpty() ? MicrophoneAuthorization::Unknown : MicrophoneAuthorization::Authorized;
}

void MicrophonePermission::requestAccess(QObject *receiver, std::function<void(bool)> answer) {
    m_requests.append({receiver, std::move(answer)});
    QMetaObject::invokeMethod(this, &MicrophonePermission::answerRequests, Qt::QueuedConnection);
}

void MicrophonePermission::noteRefusal() {
    m_isRefused = true;
    update();
}

void MicrophonePermission::forgetRefusal() {
    m_isRefused = false;
    update();
}

void MicrophonePermission::update() {
    const MicrophoneAuthorization now = authorizationStatus();
    if (std::exchange(m_announced, now) != now)
        Q_EMIT authorizationStatusChanged();
}

void MicrophonePermission::answerRequests() {
    // While we are still connecting, there is no answer yet.
    if (m_server.state() == SoundServer::State::Connecting)
        return;
    const bool isGranted = authorizationStatus() == MicrophoneAuthorization::Authorized;
    for (const Request &request : std::exchange(m_requests, {}))
        if (request.receiver)
            request.answer(isGranted);
}

} // namespace orlenta::audio
