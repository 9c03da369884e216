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

/// Stands in for the desktop's password prompt, which a real keyring daemon calls.
class KeyringPrompter final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.keyring.internal.Prompter")
public:
    /// How the user reacts to a prompt: presses Cancel, or doesn't react.
    enum class User { Dismisses, Ignores };

    KeyringPrompter(const QDBusConnection &bus, User user) : m_bus(bus), m_user(user) {}
    /// The number of prompts shown.
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

/// A private session bus, with a real keyring daemon if requested. HOME and all XDG folders are temporary. Programs
/// that run with environment() can't see the user's keyring.
class KeyringSession final {
public:
    enum class Daemon { None, Unlocked };

    explicit KeyringSession(Daemon daemon);
    ~KeyringSession();

    [[nodiscard]] QProcessEnvironment environment() const;
    /// Locks the keyring. Access then needs a prompt, which nobody answers.
    void lock();
    /// Shows prompts from now on, to a user who reacts like this.
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
