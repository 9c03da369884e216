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

/// The user's choice between the account and local voices. Runs the local voices program, and connects every window's
/// service to it or back to the account. Main thread; the defaults outlive it.
class LocalVoices final : public QObject {
    Q_OBJECT
public:
    enum class State { Off, Starting, On, Failed };

    LocalVoices(base::UserDefaults &defaults, std::unique_ptr<LocalVoicesProcess> process, QObject *parent = nullptr);
    ~LocalVoices() override;

    [[nodiscard]] State state() const { return m_state; }
    /// Why the program isn't running although the user switched it on; empty otherwise.
    [[nodiscard]] QString failureReason() const { return m_failureReason; }

    /// Connects the service to the source in use, now and after each change.
    void attach(ElevenLabsService &service);
    /// Restores the stored choice; for the start of the application.
    void restoreChoice();
    void switchOn();
    void switchOff();
    /// Ends the program without changing the stored choice; for the end of the application.
    void shutDown();

Q_SIGNALS:
    void stateChanged();

private:
    void setState(State state);
    void takeAddress(const QUrl &baseUrl, const QString &key);
    void takeFailure(const QString &reason);
    void returnToAccount(State before);
    void connectService(ElevenLabsService &service);

    base::UserDefaults &m_defaults;
    std::unique_ptr<LocalVoicesProcess> m_process;
    QList<QPointer<ElevenLabsService>> m_services;
    State m_state = State::Off;
    QString m_failureReason;
    QUrl m_baseUrl;
    QString m_key;
};

} // namespace orlenta::speech
