#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "audio/devices/MicrophoneAuthorization.h"

namespace orlenta::audio {

class SoundServer;

/// Whether this process may record. This platform has no permission prompt: the sound server allows a process to open
/// an input, or refuses the attempt. One instance per application. Main thread.
class MicrophonePermission final : public QObject {
    Q_OBJECT
public:
    explicit MicrophonePermission(const SoundServer &server, QObject *parent = nullptr);

    /// Authorized if the server has an input; Denied after it has refused one; NotDetermined without a server; Unknown
    /// if the server has no input.
    [[nodiscard]] MicrophoneAuthorization authorizationStatus() const;
    /// Calls `answer` later on this thread, once the server's state is known, unless `receiver` has been destroyed.
    void requestAccess(QObject *receiver, std::function<void(bool isGranted)> answer);
    /// Call when the server has denied access to an input. Effective until forgetRefusal() or until the connection
    /// changes.
    void noteRefusal();
    /// Call after telling the user, who may then grant access. Only the next attempt can tell.
    void forgetRefusal();

Q_SIGNALS:
    void authorizationStatusChanged();

private:
    struct Request {
        QPointer<QObject> receiver;
        std::function<void(bool)> answer;
    };

    void update();
    void answerRequests();

    const SoundServer &m_server;
    QList<Request> m_requests;
    bool m_isRefused = false;
    /// Last announced status, derived from the members above.
    MicrophoneAuthorization m_announced;
};

} // namespace orlenta::audio
