#include "shell/theme/SystemAppearance.h"

#include <gtest/gtest.h>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVariant>

#include "shell/ShellSession.h"
#include "shell/theme/SettingsPortal.h"
#include "support/KeyringSession.h"

namespace orlenta::shell {
namespace {

using test::KeyringSession;
using testing::SettingsPortal;
using testing::waitUntil;

class SystemAppearanceTest : public ::testing::Test {
protected:
    SystemAppearanceTest()
        : m_address(m_session.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"))),
          desktop(QDBusConnection::connectToBus(m_address, QStringLiteral("desktop"))),
          application(QDBusConnection::connectToBus(m_address, QStringLiteral("application"))) {}
    ~SystemAppearanceTest() override {
        for (const QString &name : {desktop.name(), application.name()})
            QDBusConnection::disconnectFromBus(name);
    }

private:
    KeyringSession m_session{KeyringSession::Daemon::None};
    QString m_address;

protected:
    QDBusConnection desktop;
    QDBusConnection application;
};

TEST_F(SystemAppearanceTest, FollowsThePreferenceWhileTheApplicationRuns) {
    SettingsPortal portal(desktop, SettingsPortal::Scheme::PreferDark);
    SystemAppearance appearance(application);
    EXPECT_TRUE(waitUntil([&] { return appearance.prefersDark(); }));
    portal.choose(SettingsPortal::Scheme::PreferLight);
    EXPECT_TRUE(waitUntil([&] { return !appearance.prefersDark(); }));
    portal.choose(SettingsPortal::Scheme::PreferDark);
    EXPECT_TRUE(waitUntil([&] { return appearance.prefersDark(); }));
}

TEST_F(SystemAppearanceTest, APortalThatStartsLateOrAgainIsAskedAgain) {
    SystemAppearance appearance(application);
    {
        const SettingsPortal late(desktop, SettingsPortal::Scheme::PreferDark);
        EXPECT_TRUE(waitUntil([&] { return appearance.prefersDark(); }));
    }
    const SettingsPortal restarted(desktop, SettingsPortal::Scheme::PreferLight);
    EXPECT_TRUE(waitUntil([&] { return !appearance.prefersDark(); }));
}

} // namespace
} // namespace orlenta::shell
