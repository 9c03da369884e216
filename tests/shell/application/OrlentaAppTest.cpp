#include "shell/application/OrlentaApp.h"

#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

#include "base/files/PrivateFolders.h"
#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"
#include "support/SoundServerSession.h"
#include "support/TestTone.h"

namespace orlenta {
namespace {

/// Sets environment variables for the duration of a test.
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

/// A private home folder.
class Home final {
public:
    Home() {
        for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME", "TMPDIR"})
            environment.set(name, folder.path());
        environment.set("PULSE_SERVER", QStringLiteral("unix:%1/no-server").arg(folder.path()));
    }

    const QTemporaryDir folder;
    Environment environment;
};

QMessageBox *leftoversBox() {
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowTitle() == QStringLiteral("Leftover recordings"))
            return qobject_cast<QMessageBox *>(window);
    return nullptr;
}

TEST(OrlentaApp, ReportsLeftoverRecordingsAtStartAndOpensTheirFolder) {
    const Home home;
    testing::FileManager files;
    const QString caches = base::PrivateFolders::caches();
    const QString path = caches + QStringLiteral("/direction_3F2504E0-4F89-11D3-9A0C-0305E82C3301.wav");
    ASSERT_FALSE(testing::writeTone(path, 0.1).isEmpty());
    {
        shell::OrlentaApp app;
        app.start({});
        EXPECT_EQ(leftoversBox(), nullptr) << "another process may still be storing it";
    }
    QFile recording(path);
    ASSERT_TRUE(recording.open(QFile::ReadWrite));
    ASSERT_TRUE(recording.setFileTime(QDateTime::currentDateTime().addDays(-30), QFile::FileModificationTime));
    recording.close();
    {
        shell::OrlentaApp app;
        app.start({});
        QMessageBox *box = leftoversBox();
        ASSERT_NE(box, nullptr);
        EXPECT_FALSE(box->isModal());
        EXPECT_TRUE(box->informativeText().contains(caches));
        testing::buttonNamed(*box, QStringLiteral("Show in Folder"))->click();
        EXPECT_EQ(files.shown, QList<QUrl>{QUrl::fromLocalFile(caches)});
        EXPECT_EQ(leftoversBox(), nullptr);
    }
    EXPECT_TRUE(QFile::exists(path));
    shell::Theme::apply(shell::Appearance::Light);
    shell::Theme::setUiScale(1.0);
}

TEST(OrlentaApp, RestoresTheMicrophoneAfterACrash) {
    testing::SoundServerSession server(testing::SoundServerSession::Kind::PulseAudio);
    ASSERT_EQ(server.failure(), QString());
    const auto defaultSource = [&] { return server.pactl({QStringLiteral("get-default-source")}); };
    server.pactl({QStringLiteral("load-module"), QStringLiteral("module-remap-source"),
                  QStringLiteral("source_name=mic_b"), QStringLiteral("master=mic_feed.monitor")});
    server.pactl({QStringLiteral("set-default-source"), QStringLiteral("mic_b")});
    ASSERT_EQ(defaultSource(), QStringLiteral("mic_b"));

    Home home;
    home.environment.set("PULSE_SERVER", server.address());
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
