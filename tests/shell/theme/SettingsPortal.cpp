#include "shell/theme/SettingsPortal.h"

#include <gtest/gtest.h>

namespace orlenta::testing {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace

// As with the real portal, the object is there before the name.
SettingsPortal::SettingsPortal(const QDBusConnection &bus, Scheme scheme) : m_bus(bus), m_scheme(scheme) {
    EXPECT_TRUE(m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals));
    EXPECT_TRUE(m_bus.registerService(service));
}

SettingsPortal::~SettingsPortal() {
    m_bus.unregisterService(service);
    m_bus.unregisterObject(path);
}

void SettingsPortal::choose(Scheme scheme) {
    m_scheme = scheme;
    Q_EMIT SettingChanged(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("color-scheme"),
                          QDBusVariant(static_cast<uint>(scheme)));
}

// The portal wraps the value twice.
QDBusVariant SettingsPortal::Read(const QString &, const QString &) {
    return QDBusVariant(QVariant::fromValue(QDBusVariant(static_cast<uint>(m_scheme))));
}

} // namespace orlenta::testing
