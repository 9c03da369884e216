#include "base/UserDefaults.h"

#include <gtest/gtest.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

namespace orlenta::base {
namespace {

using namespace Qt::StringLiterals;

TEST(UserDefaults, AnEmptyStoreGivesTheDefaults) {
    const QTemporaryDir folder;
    const UserDefaults defaults(folder.filePath(u"a.ini"_s));
    EXPECT_EQ(defaults.audioFormat(), u"mp3"_s);
    EXPECT_EQ(defaults.mp3Quality(), u"192"_s);
    EXPECT_EQ(defaults.wavBitDepth(), u"24"_s);
    EXPECT_EQ(defaults.wavSampleRate(), u"48000"_s);
    EXPECT_EQ(defaults.appearance(), u"auto"_s);
    EXPECT_EQ(defaults.uiScale(), 1.0);
    EXPECT_EQ(defaults.multiLineSpotOutputMode(), u"continuous"_s);
    EXPECT_EQ(defaults.newProjectLocationSelection(), u"default"_s);
    EXPECT_TRUE(defaults.showWelcomeOnEmptyState());
    EXPECT_FALSE(defaults.hasCompletedFirstRunSetup());
    EXPECT_FALSE(defaults.useAppleIntelligenceForTags());
    EXPECT_TRUE(defaults.recentProjects().isEmpty());
}

TEST(UserDefaults, TwoHoldersOfOneFileSeeEachOther) {
    const QTemporaryDir folder;
    UserDefaults first(folder.filePath(u"a.ini"_s));
    const UserDefaults second(folder.filePath(u"a.ini"_s));
    const QVariantMap cache{{u"[sighs] ü"_s, u"Vocal"_s}};
    first.setTagClassificationCache(cache);
    first.setVoiceRecents({u"a"_s, u"b,c"_s});
    first.setRecentProjects("[1]");
    EXPECT_EQ(second.tagClassificationCache(), cache);
    EXPECT_EQ(second.voiceRecents(), (QStringList{u"a"_s, u"b,c"_s}));
    EXPECT_EQ(second.recentProjects(), "[1]");
}

TEST(UserDefaults, TheInputToRestoreIsOnDiskAtOnceAndIsRemovedCompletely) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.ini"_s);
    UserDefaults defaults(path);
    const auto text = [&] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    defaults.setPendingInputRouteRestoreDeviceUID(u"mic-1"_s);
    EXPECT_TRUE(text().contains("pendingInputRouteRestoreDeviceUID=mic-1"));
    defaults.setPendingInputRouteRestoreDeviceUID({});
    EXPECT_FALSE(text().contains("pendingInputRouteRestoreDeviceUID"));
}

TEST(UserDefaults, AFailureToStoreTheInputToRestoreIsReportedAndNotPermanent) {
    const QTemporaryDir folder;
    QFile inTheWay(folder.filePath(u"sub"_s));
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    UserDefaults defaults(folder.filePath(u"sub/a.ini"_s));
    EXPECT_FALSE(defaults.setPendingInputRouteRestoreDeviceUID(u"mic-1"_s));
    ASSERT_TRUE(inTheWay.remove());
    EXPECT_TRUE(defaults.setPendingInputRouteRestoreDeviceUID(u"mic-2"_s));
    EXPECT_EQ(UserDefaults(folder.filePath(u"sub/a.ini"_s)).pendingInputRouteRestoreDeviceUID(), u"mic-2"_s);
}

TEST(UserDefaults, AScaleOutOfRangeIsClamped) {
    const QTemporaryDir folder;
    UserDefaults defaults(folder.filePath(u"a.ini"_s));
    for (const auto &[stored, read] : {std::pair{0.1, 0.8}, std::pair{1.2, 1.2}, std::pair{9.0, 1.5}}) {
        defaults.setUiScale(stored);
        EXPECT_EQ(defaults.uiScale(), read);
    }
}

} // namespace
} // namespace orlenta::base
