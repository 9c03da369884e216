#include "shell/application/OrlentaApp.h"

#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QApplication>

#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "support/SoundServerSession.h"

namespace orlenta {
namespace {

/// Environment variables for the length of a test.
class Environment final {
public:
    void set(const char *name, const QString &value) {
        m_before.emplace_back(name, qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt);
        qputenv(name, value.toUtf8());
    }
    ~Environment() {
        for (const auto &[name, value] : m_before)
            if (value)
                qputenv(name, *value);
            else
                qunsetenv(name);
    }

private:
    std::vector<std::pair<const char *, std::optional<QByteArray>>> m_before;
};

TEST(OrlentaApp, StartingPutsBackTheMicrophoneThatACrashLeftChanged) {
    testing::SoundServerSession server(testing::SoundServerSession::Kind::PulseAudio);
    ASSERT_EQ(server.failure(), QString());
    const auto defaultSource = [&] { return server.pactl({QStringLiteral("get-default-source")}); };
    server.pactl({QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
                  QStringLiteral("source_name=mic_b"), QStringLiteral("master=mic_feed.monitor")});
    server.pactl({QStringLiteral("set-default-source"), QStringLiteral("mic_b")});
    ASSERT_EQ(defaultSource(), QStringLiteral("mic_b"));

    const QTemporaryDir folder;
    Environment environment;
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "TMPDIR"})
        environment.set(name, folder.path());
    environment.set("PULSE_SERVER", server.address());
    ASSERT_TRUE(base::UserDefaults().setPendingInputRouteRestoreDeviceUID(QStringLiteral("mic_a")));
    {
        shell::OrlentaApp app;
        app.start({});
        EXPECT_TRUE(testing::waitUntil([&] { return defaultSource() == QStringLiteral("mic_a"); }));
        EXPECT_TRUE(testing::waitUntil([&] { return app.defaults().pendingInputRouteRestoreDeviceUID().isEmpty(); }));
    }
    shell::Theme::apply(shell::Appearance::Light);
    shell::Theme::setUiScale(1.0);
}

} // namespace
} // namespace orlenta
