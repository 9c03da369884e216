#pragma once

#include <chrono>

#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QString>
#include <QtCore/QTimer>
#include <QtCore/QUrl>

namespace orlenta::speech {

/// The program of this machine's own voices, run as a child that lives no longer than this object: it ends when its
/// standard input closes, so it also ends when this process dies. Main thread.
class LocalVoicesProcess final : public QObject {
    Q_OBJECT
public:
    /// The program that stands beside this application's binary.
    explicit LocalVoicesProcess(QObject *parent = nullptr);
    /// A program of the caller's choice, and how long it may take to say where it listens.
    LocalVoicesProcess(const QString &program, std::chrono::milliseconds startTimeout, QObject *parent = nullptr);
    ~LocalVoicesProcess() override;

    /// Ends in ready() or failed(). Does nothing while the program runs.
    void start();
    /// Ends the program without a signal. Returns at once.
    void stop();
    [[nodiscard]] bool isRunning() const;

Q_SIGNALS:
    /// The program answers at `baseUrl` to whoever sends `key`.
    void ready(const QUrl &baseUrl, const QString &key);
    /// The program did not start, or ended by itself. `reason` is a sentence for the user.
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
