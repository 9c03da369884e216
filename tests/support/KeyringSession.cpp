#include "support/KeyringSession.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QUuid>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusReply>
#include <QtTest/QTest>

namespace orlenta::test {

namespace {

constexpr int startLimit = 20'000;

// No service folders, so that the bus doesn't start anything on demand, least of all a keyring.
constexpr const char *busConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:dir=%1</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

void KeyringPrompter::BeginPrompting(const QDBusObjectPath &callback) {
    m_caller = message().service();
    answer(callback, QStringLiteral("PromptReady"), {QString(), QVariantMap(), QString()});
}

void KeyringPrompter::PerformPrompt(const QDBusObjectPath &callback, const QString &, const QVariantMap &,
                                    const QString &) {
    ++m_prompts;
    if (m_user == User::Dismisses)
        answer(callback, QStringLiteral("PromptReady"), {QStringLiteral("no"), QVariantMap(), QString()});
}

void KeyringPrompter::StopPrompting(const QDBusObjectPath &callback) {
    answer(callback, QStringLiteral("PromptDone"), {});
}

void KeyringPrompter::answer(const QDBusObjectPath &callback, const QString &method, const QVariantList &arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_caller, callback.path(), QStringLiteral("org.gnome.keyring.internal.Prompter.Callback"), method);
    call.setArguments(arguments);
    // Queued, because the daemon doesn't listen before this call has returned.
    QMetaObject::invokeMethod(
        this, [this, call] { m_bus.asyncCall(call); }, Qt::QueuedConnection);
}

KeyringSession::KeyringSession(Daemon daemon)
    : m_connectionName(QStringLiteral("keyring-session-") + QUuid::createUuid().toString(QUuid::WithoutBraces)) {
    startBus();
    if (daemon == Daemon::Unlocked)
        startDaemon();
}

KeyringSession::~KeyringSession() {
    QDBusConnection::disconnectFromBus(m_connectionName);
    for (QProcess *process : {&m_daemon, &m_bus}) {
        if (process->state() == QProcess::NotRunning)
            continue;
        process->kill();
        process->waitForFinished(startLimit);
    }
}

QProcessEnvironment KeyringSession::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *folder : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        environment.insert(QString::fromLatin1(folder), m_home.path());
    for (const char *desktop : {"DISPLAY", "WAYLAND_DISPLAY", "XDG_CURRENT_DESKTOP", "DESKTOP_SESSION",
                                "GNOME_KEYRING_CONTROL", "GNOME_DESKTOP_SESSION_ID", "KDE_FULL_SESSION"})
        environment.remove(QString::fromLatin1(desktop));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), m_address);
    return environment;
}

void KeyringSession::startBus() {
    QFile configuration(m_home.filePath(QStringLiteral("bus.conf")));
    if (!configuration.open(QIODevice::WriteOnly))
        qFatal("no bus configuration");
    configuration.write(QString::fromLatin1(busConfiguration).arg(m_home.path()).toUtf8());
    configuration.close();
    m_bus.setProcessEnvironment(environment());
    m_bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + configuration.fileName(),
                                                QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!m_bus.waitForReadyRead(startLimit))
        qFatal("no session bus: %s", qPrintable(m_bus.errorString()));
    m_address = QString::fromUtf8(m_bus.readLine()).trimmed();
    if (!QDBusConnection::connectToBus(m_address, m_connectionName).isConnected())
        qFatal("no connection to the session bus");
}

void KeyringSession::startDaemon() {
    m_daemon.setProcessEnvironment(environment());
    m_daemon.setProcessChannelMode(QProcess::MergedChannels);
    m_daemon.start(QStringLiteral("gnome-keyring-daemon"), {QStringLiteral("--foreground"), QStringLiteral("--unlock"),
                                                            QStringLiteral("--components=secrets")});
    m_daemon.write("password");
    m_daemon.closeWriteChannel();
    const QDBusConnection bus(m_connectionName);
    const bool answers = QTest::qWaitFor(
        [&bus] { return bus.interface()->isServiceRegistered(QStringLiteral("org.freedesktop.secrets")).value(); },
        startLimit);
    if (!answers)
        qFatal("no keyring daemon: %s", m_daemon.readAll().constData());
}

void KeyringSession::lock() {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.secrets"), QStringLiteral("/org/freedesktop/secrets"),
        QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("Lock"));
    const QList<QDBusObjectPath> collections{
        QDBusObjectPath(QStringLiteral("/org/freedesktop/secrets/aliases/default"))};
    call << QVariant::fromValue(collections);
    const QDBusMessage reply = QDBusConnection(m_connectionName).call(call);
    if (reply.type() == QDBusMessage::ErrorMessage)
        qFatal("the keyring can't be locked: %s", qPrintable(reply.errorMessage()));
}

KeyringPrompter &KeyringSession::showPrompts(KeyringPrompter::User user) {
    QDBusConnection bus(m_connectionName);
    m_prompter = std::make_unique<KeyringPrompter>(bus, user);
    bus.registerObject(QStringLiteral("/org/gnome/keyring/Prompter"), m_prompter.get(),
                       QDBusConnection::ExportAllSlots);
    bus.registerService(QStringLiteral("org.gnome.keyring.SystemPrompter"));
    return *m_prompter;
}

} // namespace orlenta::test
