#pragma once

#include <memory>

#include <QtCore/QObject>
#include <QtCore/QProcess>
#include <QtCore/QProcessEnvironment>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusContext>
#include <QtDBus/QDBusObjectPath>

namespace orlenta::test {

/// Stands where a desktop asks for the keyring's password. A real keyring daemon calls it.
class KeyringPrompter final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.keyring.internal.Prompter")
public:
    /// What the user does in front of a prompt: press Cancel, or nothing.
    enum class User { Dismisses, Ignores };

    KeyringPrompter(const QDBusConnection &bus, User user) : m_bus(bus), m_user(user) {}
    /// How many prompts were shown.
    [[nodiscard]] int prompts() const { return m_prompts; }

public Q_SLOTS:
    void BeginPrompting(const QDBusObjectPath &callback);
    void PerformPrompt(const QDBusObjectPath &callback, const QString &type, const QVariantMap &properties,
                       const QString &exchange);
    void StopPrompting(const QDBusObjectPath &callback);

private:
    void answer(const QDBusObjectPath &callback, const QString &method, const QVariantList &arguments);

    QDBusConnection m_bus;
    QString m_caller;
    User m_user;
    int m_prompts = 0;
};

/// A session bus of its own with, where asked for, a real keyring daemon on it: HOME and all XDG folders are its own
/// and end with it. Programs that run under environment() see nothing of the user's keyring.
class KeyringSession final {
public:
    enum class Daemon { None, Unlocked };

    explicit KeyringSession(Daemon daemon);
    ~KeyringSession();

    [[nodiscard]] QProcessEnvironment environment() const;
    /// Locks the keyring; reading and writing then need a prompt, which nobody answers.
    void lock();
    /// From now on prompts are shown, to such a user.
    [[nodiscard]] KeyringPrompter &showPrompts(KeyringPrompter::User user);

private:
    void startBus();
    void startDaemon();

    QTemporaryDir m_home;
    QProcess m_bus;
    QProcess m_daemon;
    QString m_address;
    QString m_connectionName;
    std::unique_ptr<KeyringPrompter> m_prompter;
};

} // namespace orlenta::test
