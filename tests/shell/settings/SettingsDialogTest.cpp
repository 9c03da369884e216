#include "shell/settings/SettingsDialog.h"

#include <gtest/gtest.h>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include "shell/ShellSession.h"
#include "shell/theme/Theme.h"

namespace orlenta {
namespace {

using shell::SettingsDialog;
using testing::ShellSession;

QComboBox *picker(const SettingsDialog &dialog, const QString &name) {
    for (QComboBox *candidate : dialog.findChildren<QComboBox *>()) {
        if (candidate->accessibleName() == name)
            return candidate;
    }
    return nullptr;
}

void choose(const SettingsDialog &dialog, const QString &name, const QString &choice) {
    QComboBox *combo = picker(dialog, name);
    ASSERT_NE(combo, nullptr) << name.toStdString();
    const int row = combo->findText(choice);
    ASSERT_GE(row, 0) << choice.toStdString();
    combo->setCurrentIndex(row);
    Q_EMIT combo->activated(row);
}

bool showsText(const SettingsDialog &dialog, const QString &beginning) {
    for (const QLabel *label : dialog.findChildren<QLabel *>()) {
        if (label->isVisible() && label->text().startsWith(beginning))
            return true;
    }
    return false;
}

TEST(SettingsDialog, StoresTheOutputFormatAndShowsItsOptions) {
    ShellSession session;
    SettingsDialog dialog(session.context);
    dialog.show();
    EXPECT_TRUE(picker(dialog, QStringLiteral("Quality"))->isVisible());
    EXPECT_FALSE(showsText(dialog, QStringLiteral("WAV output requires an ElevenLabs Pro plan")));
    choose(dialog, QStringLiteral("Quality"), QStringLiteral("64 kbps"));
    choose(dialog, QStringLiteral("Format"), QStringLiteral("WAV"));
    choose(dialog, QStringLiteral("Bit Depth"), QStringLiteral("16-bit"));
    choose(dialog, QStringLiteral("Sample Rate"), QStringLiteral("44.1 kHz"));
    EXPECT_FALSE(picker(dialog, QStringLiteral("Quality"))->isVisible());
    EXPECT_FALSE(showsText(dialog, QStringLiteral("Quality")));
    EXPECT_TRUE(showsText(dialog, QStringLiteral("WAV output requires an ElevenLabs Pro plan")));
    EXPECT_TRUE(showsText(dialog, QStringLiteral("Tip: For best results")));
    EXPECT_EQ(session.defaults.audioFormat(), QStringLiteral("wav"));
    EXPECT_EQ(session.defaults.mp3Quality(), QStringLiteral("64"));
    EXPECT_EQ(session.defaults.wavBitDepth(), QStringLiteral("16"));
    EXPECT_EQ(session.defaults.wavSampleRate(), QStringLiteral("44100"));

    const SettingsDialog again(session.context);
    EXPECT_EQ(picker(again, QStringLiteral("Format"))->currentText(), QStringLiteral("WAV"));
    EXPECT_EQ(picker(again, QStringLiteral("Sample Rate"))->currentText(), QStringLiteral("44.1 kHz"));
}

TEST(SettingsDialog, ThemeAndScaleTakeEffectImmediately) {
    ShellSession session;
    const SettingsDialog dialog(session.context);
    const double height = QFontMetricsF(QApplication::font()).height();
    choose(dialog, QStringLiteral("Theme"), QStringLiteral("Dark"));
    choose(dialog, QStringLiteral("Interface scale"), QStringLiteral("150 %"));
    EXPECT_EQ(session.defaults.appearance(), QStringLiteral("dark"));
    EXPECT_LT(QApplication::palette().color(QPalette::Window).lightness(), 128);
    EXPECT_DOUBLE_EQ(session.defaults.uiScale(), 1.5);
    EXPECT_GT(QFontMetricsF(QApplication::font()).height(), height * 1.3);
    shell::Theme::apply(shell::Appearance::Light);
    shell::Theme::setUiScale(1.0);
}

TEST(SettingsDialog, ReturnInAPickerDoesNotRequestTheMicrophone) {
    ShellSession session;
    SettingsDialog dialog(session.context);
    dialog.show();
    const auto *grant = qobject_cast<QPushButton *>(testing::buttonNamed(dialog, QStringLiteral("Grant Access")));
    ASSERT_NE(grant, nullptr);
    QSignalSpy pressed(grant, &QPushButton::clicked);
    picker(dialog, QStringLiteral("Theme"))->setFocus();
    QTest::keyClick(picker(dialog, QStringLiteral("Theme")), Qt::Key_Return);
    EXPECT_EQ(pressed.size(), 0);
}

TEST(SettingsDialog, AMissingDeviceShowsAsTheDefaultAndStaysStored) {
    ShellSession session;
    session.defaults.setOutputDeviceUID(QStringLiteral("studio-monitor"));
    const SettingsDialog dialog(session.context);
    EXPECT_EQ(picker(dialog, QStringLiteral("Output"))->currentText(), QStringLiteral("System Default"));
    EXPECT_EQ(session.defaults.outputDeviceUID(), QStringLiteral("studio-monitor"));
}

} // namespace
} // namespace orlenta
