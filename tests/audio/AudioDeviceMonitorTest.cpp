#include "audio/devices/AudioDeviceMonitor.h"

#include "audio/SoundServerTest.h"
#include "support/KeptLog.h"

namespace orlenta::audio {
namespace {

class AudioDeviceMonitorTest : public SoundServerTest {
protected:
    static QStringList uids(const QList<AudioDeviceInfo> &devices) {
        QStringList found;
        for (const AudioDeviceInfo &device : devices)
            found.append(device.uid);
        found.sort();
        return found;
    }
};

/// What only PipeWire has: an output and an input of one name.
class PipeWireDeviceMonitorTest : public AudioDeviceMonitorTest {};

TEST_P(AudioDeviceMonitorTest, ListsWhatTheUserPluggedInAndNoMonitors) {
    const AudioDeviceMonitor monitor(server, defaults);

    EXPECT_EQ(uids(monitor.outputDevices()),
              QStringList({QStringLiteral("mic_feed"), QStringLiteral("spk_a"), QStringLiteral("spk_b")}));
    EXPECT_EQ(uids(monitor.inputDevices()), QStringList({QStringLiteral("mic_a")}));
    EXPECT_EQ(server.devices().findOutput(QStringLiteral("spk_a"))->info.name, QStringLiteral("Output-spk_a"));
    EXPECT_EQ(monitor.deviceID(QStringLiteral("spk_b")), outputID(QStringLiteral("spk_b")));
    EXPECT_FALSE(monitor.deviceID(QStringLiteral("never plugged in")).has_value());
}

TEST_P(AudioDeviceMonitorTest, ABurstOfChangesIsToldOnce) {
    const AudioDeviceMonitor monitor(server, defaults);
    QSignalSpy refreshes(&monitor, &AudioDeviceMonitor::refreshed);

    for (int i = 0; i < 10; ++i)
        Q_EMIT server.devicesChanged();

    ASSERT_TRUE(refreshes.wait(deadline));
    session.addOutput(QStringLiteral("later"));
    ASSERT_TRUE(refreshes.wait(deadline));
    EXPECT_EQ(refreshes.count(), 2);
}

TEST_P(AudioDeviceMonitorTest, TheChosenOutputsComingAndGoingIsLoggedOnceEach) {
    const QString module = session.addOutput(QStringLiteral("usb"));
    (void)outputID(QStringLiteral("usb"));
    defaults.setOutputDeviceUID(QStringLiteral("usb"));
    const testing::KeptLog log;
    const AudioDeviceMonitor monitor(server, defaults);
    QSignalSpy refreshes(&monitor, &AudioDeviceMonitor::refreshed);

    session.remove(module);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !monitor.isOutputAvailable(QStringLiteral("usb")); }, deadline));
    EXPECT_EQ(log.lines(QStringLiteral("selected output became unavailable uid=usb")).size(), 1);
    EXPECT_FALSE(monitor.deviceID(QStringLiteral("usb")).has_value());

    session.addOutput(QStringLiteral("usb"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return monitor.isOutputAvailable(QStringLiteral("usb")); }, deadline));
    EXPECT_EQ(log.lines(QStringLiteral("selected output became available uid=usb")).size(), 1);
    EXPECT_EQ(monitor.deviceID(QStringLiteral("usb")), outputID(QStringLiteral("usb")));
    EXPECT_EQ(log.lines(QStringLiteral("selected input became")).size(), 0);
}

TEST_P(AudioDeviceMonitorTest, AFreshlyReturnedDeviceResolvesBeforeTheListIsRefreshed) {
    AudioDeviceMonitor monitor(server, defaults);
    const QString module = session.addOutput(QStringLiteral("usb"));
    const std::uint32_t before = outputID(QStringLiteral("usb"));
    monitor.refresh(QStringLiteral("test"));
    session.remove(module);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !server.devices().findOutput(QStringLiteral("usb")); }, deadline));
    session.addOutput(QStringLiteral("usb"));
    const std::uint32_t after = outputID(QStringLiteral("usb"));

    EXPECT_NE(after, before);
    EXPECT_EQ(monitor.deviceID(QStringLiteral("usb")), after);
}

TEST_P(PipeWireDeviceMonitorTest, ADeviceThatPlaysAndRecordsIsOneDevice) {
    session.pactl({QStringLiteral("load-module"), QStringLiteral("module-null-sink"),
                   QStringLiteral("media.class=Audio/Duplex"), QStringLiteral("sink_name=headset"),
                   QStringLiteral("channels=2")});
    const QString uid = QStringLiteral("headset");
    AudioDeviceMonitor monitor(server, defaults);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return monitor.isInputAvailable(uid) && monitor.isOutputAvailable(uid); }, deadline));
    ASSERT_TRUE(monitor.deviceID(uid).has_value());
    EXPECT_EQ(monitor.deviceID(uid), outputID(uid));
    EXPECT_EQ(server.devices().findInput(uid)->info.deviceID, outputID(uid));
}

TEST_P(AudioDeviceMonitorTest, AChosenDeviceThatIsThereFromTheStartIsNoNews) {
    defaults.setOutputDeviceUID(QStringLiteral("spk_b"));
    const testing::KeptLog log;
    SoundServer fresh(session.address());
    const AudioDeviceMonitor monitor(fresh, defaults);
    ASSERT_TRUE(QTest::qWaitFor([&] { return monitor.isOutputAvailable(QStringLiteral("spk_b")); }, deadline));
    EXPECT_EQ(log.lines(QStringLiteral("selected output became")).size(), 0);
}

TEST_P(AudioDeviceMonitorTest, DevicesFillInWhenAServerAppears) {
    const AudioDeviceMonitor monitor(server, defaults);
    session.kill();
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.state() != SoundServer::State::Ready; }, deadline));
    ASSERT_TRUE(QTest::qWaitFor([&] { return monitor.outputDevices().isEmpty(); }, deadline));

    session.restart();

    ASSERT_TRUE(QTest::qWaitFor([&] { return monitor.outputDevices().size() >= 3; }, deadline));
    EXPECT_TRUE(monitor.isInputAvailable(QStringLiteral("mic_a")));
}

INSTANTIATE_TEST_SUITE_P(On, PipeWireDeviceMonitorTest, ::testing::Values(testing::SoundServerSession::Kind::PipeWire),
                         serverName);
INSTANTIATE_TEST_SUITE_P(On, AudioDeviceMonitorTest, bothServers(), serverName);

} // namespace
} // namespace orlenta::audio
