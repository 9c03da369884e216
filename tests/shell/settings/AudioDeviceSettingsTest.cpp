#include "shell/settings/AudioDeviceSettings.h"

#include <gtest/gtest.h>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "shell/settings/PermissionSettings.h"
#include "shell/ShellSession.h"
#include "support/SoundServerSession.h"

namespace orlenta {
namespace {

using testing::ShellSession;
using testing::SoundServerSession;

/// The pickers with a private sound server whose devices are plugged and unplugged.
class AudioDeviceSettingsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(server.failure(), QString());
        ASSERT_TRUE(testing::waitUntil([this] { return session.devices.isOutputAvailable(QStringLiteral("spk_a")); }));
    }

    [[nodiscard]] QComboBox *picker(const QString &name) const {
        for (QComboBox *candidate : settings.findChildren<QComboBox *>())
            if (candidate->accessibleName() == name)
                return candidate;
        return nullptr;
    }
    [[nodiscard]] QStringList uids(const QString &name) const {
        QStringList uids;
        for (int row = 0; row < picker(name)->count(); ++row)
            uids.append(picker(name)->itemData(row).toString());
        return uids;
    }
    void choose(const QString &name, const QString &uid) {
        QComboBox *combo = picker(name);
        combo->setCurrentIndex(combo->findData(uid));
        Q_EMIT combo->activated(combo->currentIndex());
    }
    [[nodiscard]] bool shows(const QString &text) const {
        for (const QLabel *label : settings.findChildren<QLabel *>())
            if (label->isVisibleTo(&settings) && label->text() == text)
                return true;
        return false;
    }

    SoundServerSession server{SoundServerSession::Kind::PulseAudio};
    ShellSession session{QString(), server.address()};
    shell::AudioDeviceSettings settings{session.defaults, session.devices, session.routing};
};

TEST_F(AudioDeviceSettingsTest, ThePickersListTheSystemDefaultFirstAndFollowPlugging) {
    for (const QString &name : {QStringLiteral("Input"), QStringLiteral("Output")})
        EXPECT_EQ(picker(name)->itemText(0), QStringLiteral("System Default"));
    EXPECT_TRUE(uids(QStringLiteral("Input")).contains(QStringLiteral("mic_a")));
    EXPECT_TRUE(uids(QStringLiteral("Output")).contains(QStringLiteral("spk_b")));
    const QString usb = server.addOutput(QStringLiteral("usb"));
    EXPECT_TRUE(testing::waitUntil([this] { return uids(QStringLiteral("Output")).contains(QStringLiteral("usb")); }));
    server.remove(usb);
    EXPECT_TRUE(testing::waitUntil([this] { return !uids(QStringLiteral("Output")).contains(QStringLiteral("usb")); }));
}

TEST_F(AudioDeviceSettingsTest, AnUnpluggedDeviceStaysStoredAndReappearsWhenPluggedIn) {
    const QString usb = server.addOutput(QStringLiteral("usb"));
    ASSERT_TRUE(testing::waitUntil([this] { return uids(QStringLiteral("Output")).contains(QStringLiteral("usb")); }));
    choose(QStringLiteral("Output"), QStringLiteral("usb"));
    EXPECT_EQ(session.defaults.outputDeviceUID(), QStringLiteral("usb"));
    const auto shown = [this] { return picker(QStringLiteral("Output"))->currentData().toString(); };
    server.remove(usb);
    EXPECT_TRUE(testing::waitUntil([&] { return shown().isEmpty(); }));
    EXPECT_EQ(session.defaults.outputDeviceUID(), QStringLiteral("usb"));
    const QString again = server.addOutput(QStringLiteral("usb"));
    EXPECT_TRUE(testing::waitUntil([&] { return shown() == QStringLiteral("usb"); }));
    choose(QStringLiteral("Output"), QString());
    EXPECT_EQ(session.defaults.outputDeviceUID(), QString());
}

TEST_F(AudioDeviceSettingsTest, ShowsTheLastRoutingFailureUntilPlaybackSucceeds) {
    const QString title = QStringLiteral("Last playback failed to route");
    const QString reason = QStringLiteral("The output did not answer.");
    EXPECT_FALSE(shows(title));
    session.routing.recordRoutingFailure(reason, QStringLiteral("test"));
    EXPECT_TRUE(shows(title));
    EXPECT_TRUE(shows(reason));
    session.routing.clearRoutingFailure(QStringLiteral("test"));
    EXPECT_FALSE(shows(title));
    EXPECT_FALSE(shows(reason));
}

TEST_F(AudioDeviceSettingsTest, TheMicrophoneIsGrantedWhileThereIsAnInputAndAskingShowsWhyNot) {
    const shell::PermissionSettings permissions(session.microphone, session.commands);
    const auto isShown = [&](const QString &text) {
        for (const QLabel *label : permissions.findChildren<QLabel *>())
            if (label->text() == text)
                return label->isVisibleTo(&permissions);
        return false;
    };
    const auto isGranted = [&] { return isShown(QStringLiteral("Granted")); };
    const auto ask = [&] { permissions.findChild<QPushButton *>()->click(); };
    const QString noInput = QStringLiteral("No microphone is connected.");
    const QString noServer = QStringLiteral("The sound server is not available.");
    EXPECT_TRUE(isGranted());
    const QString before = server.pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("modules")});
    for (const QString &module : before.split(QLatin1Char('\n')))
        if (module.contains(QStringLiteral("source_name=mic_a")))
            server.remove(module.section(QLatin1Char('\t'), 0, 0));
    EXPECT_TRUE(testing::waitUntil([&] { return !isGranted(); }));
    EXPECT_FALSE(isShown(noInput));
    ask();
    EXPECT_TRUE(testing::waitUntil([&] { return isShown(noInput); }));
    server.kill();
    EXPECT_TRUE(testing::waitUntil([&] { return isShown(noServer); }));
    EXPECT_FALSE(isGranted());
    server.restart();
    EXPECT_TRUE(testing::waitUntil([&] { return isGranted(); }));
    EXPECT_FALSE(isShown(noServer));
}

} // namespace
} // namespace orlenta
