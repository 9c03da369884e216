#pragma once

#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>

class QDBusPendingCallWatcher;
class QDBusVariant;

namespace orlenta::shell {

/// The desktop's light or dark preference, read from its settings portal and kept up to date. Light until the portal
/// answers, and without one. A portal that appears later or restarts is asked again.
class SystemAppearance final : public QObject {
    Q_OBJECT
public:
    explicit SystemAppearance(QObject *parent = nullptr);
    explicit SystemAppearance(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool prefersDark() const { return m_prefersDark; }

Q_SIGNALS:
    void prefersDarkChanged();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void follow();
    void read();
    void takeReply(QDBusPendingCallWatcher *watcher);
    void take(const QVariant &value);

    QDBusConnection m_bus;
    bool m_prefersDark = false;
};

} // namespace orlenta::shell
