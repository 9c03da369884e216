#pragma once

#include <memory>

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QUrl>

namespace orlenta::base {
class UserDefaults;
}

namespace orlenta::speech {
class ElevenLabsService;
class LocalVoicesProcess;
} // namespace orlenta::speech

namespace orlenta::shell {

/// The user's choice between the account's voices and those of this machine: runs the program that speaks, and points
/// every window's service to it or back to the account. Main thread; the defaults outlive it.
class LocalVoices final : public QObject {
    Q_OBJECT
public:
    enum class State { Off, Starting, On, Failed };

    LocalVoices(base::UserDefaults &defaults, std::unique_ptr<speech::LocalVoicesProcess> process,
                QObject *parent = nullptr);
    ~LocalVoices() override;

    [[nodiscard]] State state() const { return m_state; }
    /// Why the program isn't running although it was asked for; empty otherwise.
    [[nodiscard]] QString failureReason() const { return m_failureReason; }

    /// Keeps the service on the source in use from now on, and connects it there.
    void attach(speech::ElevenLabsService &service);
    /// The choice as last stored; for the start of the application.
    void restoreChoice();
    void switchOn();
    void switchOff();
    /// Ends the program and leaves the stored choice alone; for the end of the application.
    void shutDown();

Q_SIGNALS:
    void stateChanged();

private:
    void setState(State state);
    void takeAddress(const QUrl &baseUrl, const QString &key);
    void takeFailure(const QString &reason);
    void returnToAccount(State before);
    void connectService(speech::ElevenLabsService &service);

    base::UserDefaults &m_defaults;
    std::unique_ptr<speech::LocalVoicesProcess> m_process;
    QList<QPointer<speech::ElevenLabsService>> m_services;
    State m_state = State::Off;
    QString m_failureReason;
    QUrl m_baseUrl;
    QString m_key;
};

} // namespace orlenta::shell
