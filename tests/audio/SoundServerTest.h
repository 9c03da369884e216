#pragma once

#include <chrono>

#include <gtest/gtest.h>
#include <QtCore/QTemporaryDir>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include "audio/devices/AudioDeviceMonitor.h"
#include "audio/devices/OutputRoutingDiagnostics.h"
#include "audio/devices/SoundServer.h"
#include "base/UserDefaults.h"
#include "support/SoundServerSession.h"
#include "support/TestTone.h"

namespace orlenta::audio {

/// A connection to a private sound server of each kind.
class SoundServerTest : public ::testing::TestWithParam<testing::SoundServerSession::Kind> {
protected:
    void SetUp() override {
        ASSERT_EQ(session.failure(), QString());
        ASSERT_TRUE(QTest::qWaitFor([&] { return server.state() == SoundServer::State::Ready; }, deadline));
    }

    [[nodiscard]] std::uint32_t outputID(const QString &uid) {
        (void)QTest::qWaitFor([&] { return server.devices().findOutput(uid) != nullptr; }, deadline);
        const SoundDeviceTable table = server.devices();
        const SoundDevice *device = table.findOutput(uid);
        return device ? device->info.deviceID : 0;
    }
    [[nodiscard]] QUrl tone(double seconds, const QString &name = QStringLiteral("tone.wav"), int rate = 48000) {
        return testing::writeTone(folder.filePath(name), seconds, rate);
    }

    static constexpr int deadline = 20000;

    QTemporaryDir folder;
    testing::SoundServerSession session{GetParam()};
    SoundServer server{session.address()};
    base::UserDefaults defaults{folder.filePath(QStringLiteral("defaults.ini"))};
};

inline std::string serverName(const ::testing::TestParamInfo<testing::SoundServerSession::Kind> &info) {
    return info.param == testing::SoundServerSession::Kind::PulseAudio ? "PulseAudio" : "PipeWire";
}

inline auto bothServers() {
    return ::testing::Values(testing::SoundServerSession::Kind::PulseAudio,
                             testing::SoundServerSession::Kind::PipeWire);
}

} // namespace orlenta::audio
