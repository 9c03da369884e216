#pragma once

#include <chrono>

#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtCore/QUrl>

namespace orlenta::speech {

/// Runs the local voices program as a child process. The child ends when its standard input closes, and so never
/// outlives this object or this process. Main thread.
class LocalVoicesProcess final : public QObject {
    Q_OBJECT
public:
    /// Uses the program beside this application's binary.
    explicit LocalVoicesProcess(QObject *parent = nullptr);
    /// `startTimeout` limits the time until the program prints its address.
    LocalVoicesProcess(const QString &program, std::chrono::milliseconds startTimeout, QObject *parent = nullptr);
    ~LocalVoicesProcess() override;

    /// Leads to ready() or failed(). Does nothing while the program is running.
    void start();
    /// Ends the program without emitting a signal. Returns at once.
    void stop();
    [[nodiscard]] bool isRunning() const;

Q_SIGNALS:
    /// The program listens at `baseUrl` and requires `key`.
    void ready(const QUrl &baseUrl, const QString &key);
    /// The program didn't start, or ended unexpectedly. `reason` is a message for the user.
    void failed(const QString &reason);

private:
    enum class State { Stopped, Starting, Ready };

    void readAddress();
    void processEnded();
    void fail(const QString &reason);

    QString m_program;
    QProcess m_process;
    QTimer m_startTimer;
    QString m_key;
    State m_state = State::Stopped;
};

} // namespace orlenta::speech
