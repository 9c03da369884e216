#include "shell/theme/SystemAppearance.h"

#include <QtDBus/QDBusError>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusServiceWatcher>
#include <QtDBus/QDBusVariant>

#include "base/LogCategories.h"

namespace orlenta::shell {
namespace {

const QLatin1String portalService("org.freedesktop.portal.Desktop");
const QLatin1String portalPath("/org/freedesktop/portal/desktop");
const QLatin1String settingsInterface("org.freedesktop.portal.Settings");
const QLatin1String appearanceGroup("org.freedesktop.appearance");
const QLatin1String colorSchemeKey("color-scheme");

} // namespace

SystemAppearance::SystemAppearance(QObject *parent) : SystemAppearance(QDBusConnection::sessionBus(), parent) {}

SystemAppearance::SystemAppearance(const QDBusConnection &bus, QObject *parent) : QObject(parent), m_bus(bus) {
    if (!m_bus.isConnected())
        return;
    follow();
    read();
}

void SystemAppearance::follow() {
    // Qt D-Bus finds the types of a slot by their names, which this type doesn't have until it is registered.
    qRegisterMetaType<QDBusVariant>();
    if (!m_bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                       SLOT(settingChanged(QString, QString, QDBusVariant))))
        qCWarning(base::log::project).noquote() << "[SystemAppearance] Changes of the desktop's appearance can't be "
                                                   "followed:"
                                                << m_bus.lastError().message();
    auto *watcher = new QDBusServiceWatcher(portalService, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &SystemAppearance::read);
}

void SystemAppearance::read() {
    QDBusMessage message =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    message.setArguments({QString(appearanceGroup), QString(colorSchemeKey)});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, &SystemAppearance::takeReply);
}

void SystemAppearance::takeReply(QDBusPendingCallWatcher *watcher) {
    const QDBusPendingReply<QDBusVariant> reply = *watcher;
    if (!reply.isError())
        take(reply.value().variant());
    watcher->deleteLater();
}

void SystemAppearance::settingChanged(const QString &group, const QString &key, const QDBusVariant &value) {
    if (group == appearanceGroup && key == colorSchemeKey)
        take(value.variant());
}

void SystemAppearance::take(const QVariant &value) {
    // The portal's Read method wraps the value twice, its signal once. 1 means dark.
    const QVariant inner =
        value.userType() == qMetaTypeId<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
    const bool prefersDark = inner.toUInt() == 1;
    if (prefersDark == m_prefersDark)
        return;
    m_prefersDark = prefersDark;
    Q_EMIT prefersDarkChanged();
}

} // namespace orlenta::shell
