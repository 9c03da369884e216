#include "speech/LocalVoicesProcess.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QRandomGenerator>
#include <QtNetwork/QHostAddress>

namespace orlenta::speech {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds usualStartTimeout{15};
constexpr std::chrono::milliseconds shutdownTimeout{1000};
constexpr qsizetype longestAddressLine = 256;

/// 128 random bits, so that no other user of this computer can use the voices.
QString freshLocalKey() {
    std::array<quint32, 4> words{};
    QRandomGenerator::system()->fillRange(words.data(), words.size());
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char *>(words.data()), sizeof words).toHex());
}

} // namespace

LocalVoicesProcess::LocalVoicesProcess(QObject *parent)
    : LocalVoicesProcess(QCoreApplication::applicationDirPath() + u"/orlenta-local-voices"_s, usualStartTimeout,
                         parent) {}

LocalVoicesProcess::LocalVoicesProcess(const QString &program, std::chrono::milliseconds startTimeout, QObject *parent)
    : QObject(parent), m_program(program) {
    m_startTimer.setSingleShot(true);
    m_startTimer.setInterval(startTimeout);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(&m_startTimer, &QTimer::timeout, this, [this] { fail(u"The local voices didn't start in time."_s); });
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &LocalVoicesProcess::readAddress);
    connect(&m_process, &QProcess::finished, this, &LocalVoicesProcess::processEnded);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            fail(u"The local voices couldn't be started: %1."_s.arg(m_process.errorString()));
    });
}

LocalVoicesProcess::~LocalVoicesProcess() {
    m_state = State::Stopped;
    m_process.disconnect(this);
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(static_cast<int>(shutdownTimeout.count()))) {
        m_process.kill();
        m_process.waitForFinished(static_cast<int>(shutdownTimeout.count()));
    }
}

void LocalVoicesProcess::start() {
    if (m_state != State::Stopped)
        return;
    if (m_process.state() != QProcess::NotRunning) {
        // The previous program is still shutting down.
        m_process.kill();
        m_process.waitForFinished(static_cast<int>(shutdownTimeout.count()));
    }
    m_state = State::Starting;
    m_key = freshLocalKey();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"ORLENTA_LOCAL_VOICES_KEY"_s, m_key);
    m_process.setProcessEnvironment(environment);
    m_startTimer.start();
    m_process.start(m_program, QStringList());
}

void LocalVoicesProcess::stop() {
    m_state = State::Stopped;
    m_startTimer.stop();
    m_process.closeWriteChannel();
}

bool LocalVoicesProcess::isRunning() const {
    return m_state == State::Ready;
}

void LocalVoicesProcess::readAddress() {
    if (m_state != State::Starting) {
        m_process.readAllStandardOutput();
        return;
    }
    if (!m_process.canReadLine()) {
        if (m_process.bytesAvailable() > longestAddressLine)
            fail(u"The local voices program didn't report its address."_s);
        return;
    }
    const QUrl baseUrl(QString::fromUtf8(m_process.readLine(longestAddressLine)).trimmed(), QUrl::StrictMode);
    if (baseUrl.scheme() != "http"_L1 || !QHostAddress(baseUrl.host()).isLoopback() || baseUrl.port() <= 0) {
        fail(u"The local voices program didn't report its address."_s);
        return;
    }
    m_startTimer.stop();
    m_state = State::Ready;
    Q_EMIT ready(baseUrl, m_key);
}

void LocalVoicesProcess::processEnded() {
    if (m_state == State::Starting)
        fail(u"The local voices program quit before it was ready."_s);
    else if (m_state == State::Ready)
        fail(u"The local voices ended unexpectedly."_s);
}

void LocalVoicesProcess::fail(const QString &reason) {
    if (m_state == State::Stopped)
        return;
    m_state = State::Stopped;
    m_startTimer.stop();
    if (m_process.state() != QProcess::NotRunning)
        m_process.kill();
    Q_EMIT failed(reason);
}

} // namespace orlenta::speech
