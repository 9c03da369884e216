#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "audio/devices/MicrophoneAuthorization.h"

namespace orlenta::audio {

class SoundServer;

/// Whether this process may listen. On this platform nobody is asked: the sound server lets a process open its inputs,
/// or refuses when it tries. One for the application. Main thread.
class MicrophonePermission final : public QObject {
    Q_OBJECT
public:
    explicit MicrophonePermission(const SoundServer &server, QObject *parent = nullptr);

    /// Authorized when the server shows an input; Denied once it has refused one; NotDetermined while there is no
    /// server; Unknown when the server has no input to ask for.
    [[nodiscard]] MicrophoneAuthorization authorizationStatus() const;
    /// Calls `answer` on this thread, later, unless `receiver` has gone by then: whether the server, once it has
    /// answered, lets this process listen.
    void requestAccess(QObject *receiver, std::function<void(bool isGranted)> answer);
    /// An input could not be opened for want of the right. Counts until forgetRefusal() or until the connection to the
    /// server changes.
    void noteRefusal();
    /// The user has been told, and may have allowed it by the next time: nobody but the next attempt can tell.
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
    /// Made from the above.
    MicrophoneAuthorization m_announced;
};

} // namespace orlenta::audio
