#include "shell/inspector/Inspector.h"

#include <gtest/gtest.h>
#include <QtCore/QUrl>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QListView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSlider>
#include <QtWidgets/QToolButton>

#include "controller/casting/PresetEditing.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/Notices.h"
#include "controller/document/UndoManager.h"
#include "controller/ProjectController.h"
#include "controller/script/LineEditing.h"
#include "controller/script/Selection.h"
#include "shell/controls/SettingSlider.h"
#include "shell/inspector/InspectedLines.h"
#include "shell/inspector/ModelSection.h"
#include "shell/inspector/ModelSegment.h"
#include "shell/inspector/PresetSection.h"
#include "shell/inspector/SettingsSection.h"
#include "shell/inspector/VoiceListModel.h"
#include "shell/inspector/VoiceSection.h"
#include "shell/ShellSession.h"
#include "speech/account/ElevenLabsService.h"

namespace orlenta {
namespace {

using controller::CommandId;
using controller::SettingsControlKind;
using model::ProjectLineSettings;
using testing::ShellSession;
using testing::waitUntil;

/// An inspector for a project with three lines without a voice.
struct Inspected {
    Inspected()
        : project(shell.context.services,
                  shell.makeProject(QStringLiteral("Scene"),
                                    {QStringLiteral("One."), QStringLiteral("Two."), QStringLiteral("Three.")})) {
        inspector.resize(340, 900);
        inspector.show();
    }

    [[nodiscard]] bool connect() {
        shell.localVoices.attach(service);
        return shell.startLocalVoices() && waitUntil([this] { return !service.voices().isEmpty(); });
    }
    [[nodiscard]] const model::ProjectLine &line(int index) const {
        return *controller.project().lines.find(controller.scriptLineIds().at(index));
    }
    [[nodiscard]] ProjectLineSettings settings(int index) const {
        return controller.project().effectiveSettings(line(index));
    }
    void change(int index, double ProjectLineSettings::*member, double value) {
        ProjectLineSettings wanted = settings(index);
        wanted.*member = value;
        controller.presets().updateSettings(line(index).lineId, wanted);
    }

    ShellSession shell;
    controller::ProjectSession project;
    speech::ElevenLabsService &service = project.service();
    controller::ProjectController &controller = project.controller();
    shell::Inspector inspector{controller, service};
};

void clickRow(QListView &list, int row) {
    const QModelIndex index = list.model()->index(row, 0);
    list.scrollTo(index);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(index).center());
}

TEST(Inspector, AClickOnAVoiceCastsAllSelectedLinesInOneStep) {
    Inspected it;
    ASSERT_TRUE(it.connect());
    it.controller.selection().selectAll();
    QListView &list = *it.inspector.voices().voiceList();
    clickRow(list, 1);
    const QString chosen = list.model()->index(1, 0).data(shell::VoiceListModel::VoiceIdRole).toString();
    for (int i = 0; i < 3; ++i) {
        const model::ProjectVoice *voice = it.controller.project().voiceOf(it.line(i));
        ASSERT_NE(voice, nullptr);
        EXPECT_EQ(voice->elevenLabsVoiceId, chosen);
    }
    EXPECT_EQ(it.controller.undoManager().undoActionName(), QStringLiteral("Change Voice"));
    it.controller.undoManager().undo();
    EXPECT_FALSE(it.line(0).voiceId.has_value());
    EXPECT_FALSE(it.line(2).voiceId.has_value());
}

TEST(Inspector, ReturnCastsTheCurrentVoiceAndRecastingItAddsNoStep) {
    Inspected it;
    ASSERT_TRUE(it.connect());
    QListView &list = *it.inspector.voices().voiceList();
    it.inspector.activateWindow();
    list.setFocus();
    list.setCurrentIndex(list.model()->index(2, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    ASSERT_NE(it.controller.project().voiceOf(it.line(0)), nullptr);
    it.controller.undoManager().undo();
    QTest::keyClick(&list, Qt::Key_Return);
    QTest::keyClick(&list, Qt::Key_Return);
    it.controller.undoManager().undo();
    EXPECT_FALSE(it.controller.undoManager().canUndo());
}

TEST(Inspector, WithoutAServiceTheProjectsOwnVoicesCanBeCast) {
    Inspected it;
    QListView &list = *it.inspector.voices().voiceList();
    EXPECT_FALSE(list.isVisible());
    it.controller.voices().assignVoice({it.line(0).lineId}, {QStringLiteral("ana"), QStringLiteral("Ana")});
    it.controller.voices().assignVoice({it.line(0).lineId}, {QStringLiteral("bea"), QStringLiteral("Bea")});
    ASSERT_TRUE(list.isVisible());
    ASSERT_EQ(list.model()->rowCount(), 2);
    EXPECT_NE(testing::buttonNamed(it.inspector, QStringLiteral("Use local voices")), nullptr);
    it.controller.selection().selectAlone(it.line(2).lineId);
    clickRow(list, 0);
    EXPECT_EQ(it.line(2).voiceId, it.controller.project().voices.first().id);
    EXPECT_EQ(it.controller.project().voices.size(), 2);
    ASSERT_TRUE(it.connect());
    EXPECT_EQ(list.model()->rowCount(), it.service.voices().size());
}

TEST(Inspector, TheVoiceSearchWorksByKeyboardAlone) {
    Inspected it;
    ASSERT_TRUE(it.connect());
    QSignalSpy left(&it.inspector, &shell::Inspector::linesRequested);
    QSignalSpy refused(&it.controller.notices(), &controller::Notices::refused);
    QListView &list = *it.inspector.voices().voiceList();
    QLineEdit &search = *it.inspector.voices().searchField();
    it.inspector.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&it.inspector));
    search.setFocus();
    testing::pressKeyOf(CommandId::GoToVoices);
    EXPECT_TRUE(list.hasFocus());
    EXPECT_EQ(list.currentIndex().row(), 0);
    QTest::keyClick(&list, Qt::Key_Up);
    EXPECT_TRUE(search.hasFocus());

    // Without a search, Return chooses nobody.
    testing::pressKeyOf(CommandId::CastFoundVoice);
    EXPECT_EQ(refused.size(), 1);
    EXPECT_FALSE(it.line(0).voiceId.has_value());
    QTest::keyClicks(&search, list.model()->index(2, 0).data().toString());
    const QString found = list.model()->index(0, 0).data(shell::VoiceListModel::VoiceIdRole).toString();
    testing::pressKeyOf(CommandId::CastFoundVoice);
    ASSERT_NE(it.controller.project().voiceOf(it.line(0)), nullptr);
    EXPECT_EQ(it.controller.project().voiceOf(it.line(0))->elevenLabsVoiceId, found);
    EXPECT_EQ(left.size(), 1);

    testing::pressKeyOf(CommandId::LeaveVoiceSearch);
    EXPECT_EQ(search.text(), QString());
    EXPECT_EQ(left.size(), 1);
    testing::pressKeyOf(CommandId::LeaveVoiceSearch);
    EXPECT_EQ(left.size(), 2);
}

TEST(Inspector, TheVoiceListTakesTheHeightThatIsFree) {
    Inspected it;
    ASSERT_TRUE(it.connect());
    const QListView &list = *it.inspector.voices().voiceList();
    const int row = list.visualRect(list.model()->index(0, 0)).height();
    const int all = row * list.model()->rowCount();
    it.inspector.resize(340, 500);
    QCoreApplication::processEvents();
    const int shortest = list.height();
    EXPECT_GE(shortest, row * 5);
    EXPECT_LT(shortest, row * 6);
    it.inspector.resize(340, 1400);
    QCoreApplication::processEvents();
    EXPECT_GT(list.height(), std::min(shortest + row, all - 1));
    it.inspector.resize(340, 5000);
    QCoreApplication::processEvents();
    EXPECT_NEAR(list.height(), std::max(shortest, all), 4);
    it.inspector.resize(340, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(list.height(), shortest);
}

TEST(Inspector, TheSearchShowsOnlyMatchingVoices) {
    Inspected it;
    ASSERT_TRUE(it.connect());
    const speech::Voice &wanted = it.service.voices().at(3);
    QListView &list = *it.inspector.voices().voiceList();
    QTest::keyClicks(it.inspector.voices().searchField(), wanted.name.toUpper());
    ASSERT_GE(list.model()->rowCount(), 1);
    EXPECT_LT(list.model()->rowCount(), it.service.voices().size());
    EXPECT_EQ(list.model()->index(0, 0).data().toString(), wanted.name);
    it.inspector.voices().searchField()->setText(QStringLiteral("no such voice at all"));
    EXPECT_FALSE(list.isVisible());
    it.inspector.voices().searchField()->clear();
    EXPECT_EQ(list.model()->rowCount(), it.service.voices().size());
}

TEST(Inspector, ASliderOverDifferentLinesChangesOnlyItsOwnSetting) {
    Inspected it;
    it.change(0, &ProjectLineSettings::style, 0.1);
    it.change(1, &ProjectLineSettings::style, 0.2);
    it.controller.selection().selectAll();
    QSlider &similarity = *it.inspector.settings().slider(SettingsControlKind::Similarity)->slider();
    similarity.setValue(30);
    EXPECT_DOUBLE_EQ(it.settings(0).similarityBoost, 0.3);
    EXPECT_DOUBLE_EQ(it.settings(2).similarityBoost, 0.3);
    EXPECT_DOUBLE_EQ(it.settings(0).style, 0.1);
    EXPECT_DOUBLE_EQ(it.settings(1).style, 0.2);
    EXPECT_EQ(it.controller.undoManager().undoActionName(), QStringLiteral("Change Settings"));
    it.controller.undoManager().undo();
    EXPECT_DOUBLE_EQ(it.settings(0).similarityBoost, 0.75);
    EXPECT_DOUBLE_EQ(it.settings(2).similarityBoost, 0.75);
    EXPECT_DOUBLE_EQ(it.settings(1).style, 0.2);
}

TEST(Inspector, DraggingASliderIsOneStep) {
    Inspected it;
    QSlider &style = *it.inspector.settings().slider(SettingsControlKind::Style)->slider();
    style.setSliderDown(true);
    for (int value = 1; value <= 40; ++value)
        style.setValue(value);
    EXPECT_DOUBLE_EQ(it.settings(0).style, 0.0);
    style.setSliderDown(false);
    EXPECT_DOUBLE_EQ(it.settings(0).style, 0.4);
    it.controller.undoManager().undo();
    EXPECT_DOUBLE_EQ(it.settings(0).style, 0.0);
    EXPECT_FALSE(it.controller.undoManager().canUndo());
}

TEST(Inspector, EachModelShowsItsOwnControls) {
    Inspected it;
    const shell::SettingsSection &section = it.inspector.settings();
    for (shell::ModelSegment *segment : it.inspector.models().segments()) {
        segment->click();
        EXPECT_EQ(it.settings(0).model, segment->model().key);
        const bool isExpressive = segment->model().key == QStringLiteral("v3");
        EXPECT_EQ(section.modeButtons().first()->isVisible(), isExpressive);
        EXPECT_EQ(section.slider(SettingsControlKind::Stability)->isVisible(), !isExpressive);
        EXPECT_EQ(section.slider(SettingsControlKind::Speed)->isVisible(), !isExpressive);
        EXPECT_TRUE(section.slider(SettingsControlKind::Style)->isVisible());
    }
}

TEST(Inspector, ThePresetMenuSavesAndDeletesAndSaysSaved) {
    Inspected it;
    const auto action = [&it](const QString &title) -> QAction * {
        for (QAction *candidate : it.inspector.presets().menu()->actions())
            if (candidate->text() == title)
                return candidate;
        return nullptr;
    };
    ASSERT_GT(it.controller.project().presets.size(), 0);
    QComboBox &picker = *it.inspector.presets().picker();
    Q_EMIT picker.activated(0);
    it.change(0, &ProjectLineSettings::style, 0.3);
    ASSERT_TRUE(action(QStringLiteral("Save"))->isEnabled());
    action(QStringLiteral("Save"))->trigger();
    EXPECT_DOUBLE_EQ(it.controller.project().presets.first().settings.style, 0.3);
    EXPECT_EQ(it.inspector.presets().menuButton()->text(), QStringLiteral("Saved!"));
    it.controller.selection().selectAll();
    EXPECT_FALSE(action(QStringLiteral("Save"))->isEnabled());
    EXPECT_FALSE(action(QStringLiteral("Save As"))->isEnabled());
}

TEST(Inspector, APresetWithAMissingVoiceAppliesItsSettingsAndSaysSo) {
    Inspected it;
    ASSERT_TRUE(it.connect());
    it.controller.selection().selectAlone(it.line(0).lineId);
    clickRow(*it.inspector.voices().voiceList(), 0);
    const auto before = it.line(0).voiceId;

    model::Project project = it.controller.project();
    project.presets.first().settings.style = 0.9;
    project.presets.first().voice =
        model::ProjectPresetVoice{QStringLiteral("gone"), QStringLiteral("Ana - warm narrator"), QStringLiteral("Ana"),
                                  QStringLiteral("#112233")};
    controller::ProjectController controller(project, it.controller.projectURL());
    shell::Inspector inspector(controller, it.service);
    inspector.show();
    QComboBox &picker = *inspector.presets().picker();
    picker.setCurrentIndex(0);
    Q_EMIT picker.activated(0);
    const model::ProjectLine &line = *controller.project().lines.find(controller.scriptLineIds().first());
    EXPECT_DOUBLE_EQ(controller.project().effectiveSettings(line).style, 0.9);
    EXPECT_EQ(line.voiceId, before);
    QStringList notices;
    for (const QLabel *label : inspector.presets().findChildren<QLabel *>()) {
        if (label->isVisible())
            notices.append(label->text());
    }
    EXPECT_TRUE(notices.contains(QStringLiteral("Settings applied. This preset's voice, Ana, is no longer in your "
                                                "ElevenLabs voice library, so the line kept its current voice.")));
}

TEST(Inspector, WithNoLineSelectedNothingCanBeChanged) {
    Inspected it;
    it.controller.selection().toggle(it.controller.scriptLineIds().first());
    ASSERT_TRUE(it.controller.selection().selectedLineIds().isEmpty());
    EXPECT_FALSE(it.inspector.presets().picker()->isEnabled());
    EXPECT_FALSE(it.inspector.models().segments().first()->isEnabled());
    EXPECT_FALSE(it.inspector.settings().slider(SettingsControlKind::Style)->isEnabled());
}

} // namespace
} // namespace orlenta
