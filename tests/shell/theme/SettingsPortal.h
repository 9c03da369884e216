#pragma once

#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusVariant>

namespace orlenta::testing {

/// A settings portal on a session bus that knows one setting, the desktop's color scheme.
class SettingsPortal final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")
public:
    enum class Scheme : uint { NoPreference, PreferDark, PreferLight };

    SettingsPortal(const QDBusConnection &bus, Scheme scheme);
    ~SettingsPortal() override;

    /// The user changes the setting.
    void choose(Scheme scheme);

public Q_SLOTS:
    QDBusVariant Read(const QString &group, const QString &key);

Q_SIGNALS:
    void SettingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus;
    Scheme m_scheme;
};

} // namespace orlenta::testing
