#include "controller/casting/PresetEditing.h"

#include <gtest/gtest.h>

#include "controller/casting/CastPalette.h"
#include "controller/casting/VoiceCasting.h"
#include "controller/document/TypingSession.h"
#include "controller/document/UndoManager.h"
#include "controller/script/LineEditing.h"
#include "controller/ScriptProject.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

class PresetEditingTest : public ::testing::Test {
protected:
    ScriptProject project{{{QStringLiteral("a"), QStringLiteral("b")}}};
    PresetEditing &presets = project->presets();
    UndoManager &undo = project->undoManager();

    /// Casts Ana on the first line and saves it as a preset with that name.
    model::PresetId savedPreset(const QString &name) {
        model::ProjectLineSettings settings = *project.line(0).settings;
        settings.stability = 0.25;
        settings.model = QStringLiteral("Flash");
        project->voices().assignVoice({project.id(0)},
                                      {QStringLiteral("ana-id"), QStringLiteral("Ana - warm narrator")});
        presets.updateSettings(project.id(0), settings);
        presets.savePresetAs(name, project.id(0));
        return project->project().presets.last().id;
    }
};

} // namespace

TEST_F(PresetEditingTest, APresetMadeFromALineGivesOthersItsSettingsAndVoice) {
    const model::PresetId preset = savedPreset(QStringLiteral("Whisper"));
    EXPECT_EQ(project.line(0).presetId, preset);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Save Preset"));
    EXPECT_EQ(presets.applyPreset(preset, {model::LineId::create(), project.id(1)}, std::nullopt), std::nullopt);
    EXPECT_EQ(project.line(1).settings, project.line(0).settings);
    EXPECT_EQ(project.line(1).voiceId, project.line(0).voiceId);
    EXPECT_EQ(project.line(1).presetId, preset);
    EXPECT_EQ(project->project().voices.size(), 1);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Change Preset"));
}

TEST_F(PresetEditingTest, AMissingPresetVoiceIsNamedAndTheLineKeepsItsOwn) {
    const model::PresetId preset = savedPreset(QStringLiteral("Whisper"));
    const auto missing = presets.applyPreset(preset, {project.id(1)}, QSet<QString>{QStringLiteral("someone else")});
    ASSERT_TRUE(missing);
    EXPECT_EQ(project.line(1).voiceId, std::nullopt);
    EXPECT_EQ(project.line(1).settings, project.line(0).settings);
    EXPECT_EQ(
        PresetEditing::presetNotice(*missing),
        QStringLiteral("Settings applied. This preset's voice, Ana, is no longer in your ElevenLabs voice library, "
                       "so the line kept its current voice."));
    EXPECT_EQ(presets.applyPreset(preset, {project.id(1)}, QSet<QString>{QStringLiteral("ana-id")}), std::nullopt);
    EXPECT_EQ(project.line(1).voiceId, project.line(0).voiceId);
}

TEST_F(PresetEditingTest, APresetVoiceWithoutAColorTakesTheNextOne) {
    model::Project records = test::scriptProject({{QStringLiteral("a")}});
    model::ProjectPreset preset = model::ProjectPreset::processDefault();
    preset.voice = model::ProjectPresetVoice{QStringLiteral("x"), QStringLiteral("X"), QStringLiteral("X"), {}};
    records.presets = {preset};
    const ScriptProject plain(records);
    plain->presets().applyPreset(preset.id, {plain.id(0)}, std::nullopt);
    EXPECT_EQ(plain->voices().projectVoiceFor(plain.id(0))->colorStripeHex, castPalette().at(1));
}

TEST_F(PresetEditingTest, SavingWritesTheLineIntoItsPreset) {
    const model::PresetId preset = savedPreset(QStringLiteral("Whisper"));
    model::ProjectLineSettings settings = *project.line(0).settings;
    settings.speed = 1.125;
    presets.updateSettings(project.id(0), settings);
    project->voices().assignVoice({project.id(0)}, {QStringLiteral("ben-id"), QStringLiteral("Ben")});
    presets.savePreset(project.id(0));
    const model::ProjectPreset &saved = *project->project().findPreset(preset);
    EXPECT_EQ(saved.settings, settings);
    ASSERT_TRUE(saved.voice);
    EXPECT_EQ(saved.voice->castName, QStringLiteral("Ben"));
    undo.undo();
    EXPECT_EQ(project->project().findPreset(preset)->voice->castName, QStringLiteral("Ana - warm narrator"));
}

TEST_F(PresetEditingTest, LinesOfADeletedPresetTakeTheDefaultAndItsSettings) {
    const model::PresetId defaultId = project->project().presets.first().id;
    const model::PresetId preset = savedPreset(QStringLiteral("Whisper"));
    presets.deletePreset(preset);
    EXPECT_EQ(project.line(0).presetId, defaultId);
    EXPECT_EQ(project.line(0).settings, model::ProjectLineSettings::fallback());
    EXPECT_FALSE(presets.canDeletePreset());
    presets.deletePreset(defaultId);
    EXPECT_EQ(project->project().presets.size(), 1);
    EXPECT_EQ(undo.undoActionName(), QStringLiteral("Delete Preset"));
}

TEST(PresetEditing, ChangesInSmallStepsWithinASecondAreOneUndoStep) {
    using std::chrono::milliseconds;
    std::chrono::system_clock::time_point time{std::chrono::seconds(1'700'000'000)};
    ProjectController project(test::scriptProject({{QStringLiteral("a"), QStringLiteral("b")}}), {},
                              [&time] { return time; });
    const model::LineId first = project.scriptLineIds().at(0);
    const auto stability = [&] { return project.lines().find(first)->settings->stability; };
    const auto press = [&](SettingsControlKind control, double model::ProjectLineSettings::*member, double value,
                           milliseconds after) {
        time += after;
        model::ProjectLineSettings settings = *project.lines().find(first)->settings;
        settings.*member = value;
        project.presets().updateSettings({{first, settings}}, control);
    };
    const auto steps = [&] {
        int count = 0;
        for (; project.undoManager().canUndo(); ++count)
            project.undoManager().undo();
        return count;
    };
    using Settings = model::ProjectLineSettings;
    using enum SettingsControlKind;
    press(Stability, &Settings::stability, 0.51, milliseconds(0));
    press(Stability, &Settings::stability, 0.52, milliseconds(900));
    press(Stability, &Settings::stability, 0.53, milliseconds(900));
    project.undoManager().undo();
    EXPECT_EQ(stability(), 0.5);
    project.undoManager().redo();
    EXPECT_EQ(stability(), 0.53);
    // Not part of what was undone and redone.
    press(Stability, &Settings::stability, 0.54, milliseconds(100));
    EXPECT_EQ(steps(), 2);

    press(Stability, &Settings::stability, 0.6, milliseconds(100));
    press(Style, &Settings::style, 0.1, milliseconds(100));
    press(Stability, &Settings::stability, 0.7, milliseconds(100));
    press(Stability, &Settings::stability, 0.8, milliseconds(1100));
    EXPECT_EQ(steps(), 4);

    press(Stability, &Settings::stability, 0.6, milliseconds(100));
    project.typing().beginEditing(first);
    project.typing().type(first, QStringLiteral("typed"));
    press(Stability, &Settings::stability, 0.7, milliseconds(100));
    EXPECT_EQ(steps(), 3);
    EXPECT_EQ(project.lines().find(first)->text, QStringLiteral("a"));
}

TEST_F(PresetEditingTest, SettingsOfSeveralLinesChangeInOneStepAndUnchangedOnesMakeNone) {
    model::ProjectLineSettings settings = *project.line(0).settings;
    settings.style = 0.5;
    presets.updateSettings({project.id(0), project.id(1)}, settings);
    presets.updateSettings({project.id(0), project.id(1)}, settings);
    undo.undo();
    EXPECT_EQ(project.line(1).settings->style, 0.0);
    EXPECT_FALSE(undo.canUndo());
}

} // namespace orlenta::controller
