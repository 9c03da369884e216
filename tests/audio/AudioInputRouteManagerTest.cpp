#include "audio/recording/AudioInputRouteManager.h"

#include "audio/RecordingTest.h"

namespace orlenta::audio {
namespace {

class AudioInputRouteManagerTest : public RecordingTest {
protected:
    void SetUp() override {
        RecordingTest::SetUp();
        module = addMicrophone(QStringLiteral("mic_b"));
        makeDefaultInput(QStringLiteral("mic_a"));
        ASSERT_EQ(defaultInput(), QStringLiteral("mic_a"));
    }
    /// What another process, started after a crash of this one, would find.
    [[nodiscard]] QString pending() const {
        return base::UserDefaults(folder.filePath(QStringLiteral("defaults.ini"))).pendingInputRouteRestoreDeviceUID();
    }

    AudioInputRouteManager routes{server, defaults};
    QString module;
};

TEST_P(AudioInputRouteManagerTest, TheWayBackIsOnDiskWhileTheDefaultIsChanged) {
    defaults.setInputDeviceUID(QStringLiteral("mic_b"));
    const auto route = routes.applySelectedInputDeviceForRecording();
    ASSERT_TRUE(route.has_value());
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_b"));
    EXPECT_EQ(pending(), QStringLiteral("mic_a"));
    EXPECT_EQ(route->previousDeviceUID, QStringLiteral("mic_a"));
    EXPECT_EQ(route->targetDeviceUID, QStringLiteral("mic_b"));

    // A refresh in mid-take must not take the route away.
    routes.restorePendingDefaultInputIfNeeded(QStringLiteral("a refresh"));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_b"));
    EXPECT_EQ(pending(), QStringLiteral("mic_a"));

    routes.restoreAppliedInputRoute(*route, QStringLiteral("test"));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));
    EXPECT_EQ(pending(), QString());
}

TEST_P(AudioInputRouteManagerTest, NothingChangesWithoutAnotherInputToChangeTo) {
    for (const QString &chosen : {QString(), QStringLiteral("unplugged"), QStringLiteral("mic_a")}) {
        defaults.setInputDeviceUID(chosen);
        (void)QTest::qWaitFor([&] { return server.devices().defaultInputUID == QStringLiteral("mic_a"); }, deadline);
        EXPECT_FALSE(routes.applySelectedInputDeviceForRecording().has_value()) << qPrintable(chosen);
        EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));
        EXPECT_EQ(pending(), QString());
    }
}

TEST_P(AudioInputRouteManagerTest, AnInputThatIsGoneKeepsItsPlaceUntilARefreshFindsItAgain) {
    AudioDeviceMonitor monitor(server, defaults);
    routes.followRefreshes(monitor);
    makeDefaultInput(QStringLiteral("mic_b"));
    defaults.setInputDeviceUID(QStringLiteral("mic_a"));
    const auto route = routes.applySelectedInputDeviceForRecording();
    ASSERT_TRUE(route.has_value());
    EXPECT_EQ(pending(), QStringLiteral("mic_b"));
    unplug(QStringLiteral("mic_b"), module);

    routes.restoreAppliedInputRoute(*route, QStringLiteral("test"));
    EXPECT_EQ(pending(), QStringLiteral("mic_b"));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));

    addMicrophone(QStringLiteral("mic_b"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return pending().isEmpty(); }, deadline));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_b"));
}

TEST_P(AudioInputRouteManagerTest, TheNextRunRestoresWhatACrashLeftChanged) {
    ASSERT_TRUE(defaults.setPendingInputRouteRestoreDeviceUID(QStringLiteral("mic_b")));
    routes.restorePendingDefaultInputIfNeeded(QStringLiteral("launch"));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_b"));
    EXPECT_EQ(pending(), QString());

    // The user's own change afterwards is nobody's business.
    makeDefaultInput(QStringLiteral("mic_a"));
    routes.restorePendingDefaultInputIfNeeded(QStringLiteral("a refresh"));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));
}

TEST_P(AudioInputRouteManagerTest, AChangeThatTheServerMakesTooLateIsTakenBackByTheNextRefresh) {
    AudioDeviceMonitor monitor(server, defaults);
    routes.followRefreshes(monitor);
    defaults.setInputDeviceUID(QStringLiteral("mic_b"));
    session.suspend();
    EXPECT_FALSE(routes.applySelectedInputDeviceForRecording().has_value());
    EXPECT_EQ(pending(), QStringLiteral("mic_a"));

    session.resume();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pending().isEmpty(); }, deadline));
    EXPECT_EQ(defaultInput(), QStringLiteral("mic_a"));
}

TEST_P(AudioInputRouteManagerTest, WithoutAServerTheWayBackIsKept) {
    ASSERT_TRUE(defaults.setPendingInputRouteRestoreDeviceUID(QStringLiteral("mic_b")));
    session.kill();
    routes.restorePendingDefaultInputIfNeeded(QStringLiteral("launch"));
    EXPECT_EQ(pending(), QStringLiteral("mic_b"));
}

INSTANTIATE_TEST_SUITE_P(On, AudioInputRouteManagerTest, bothServers(), serverName);

} // namespace
} // namespace orlenta::audio
