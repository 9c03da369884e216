#include "controller/casting/VoiceCasting.h"

#include <gtest/gtest.h>

#include "controller/casting/CastPalette.h"
#include "controller/document/UndoManager.h"
#include "controller/ScriptProject.h"

namespace orlenta::controller {
namespace {

using test::ScriptProject;

const ServiceVoice ana{QStringLiteral("ana-id"), QStringLiteral("Ana")};
const ServiceVoice ben{QStringLiteral("ben-id"), QStringLiteral("Ben")};

} // namespace

TEST(VoiceCasting, AVoiceIsCastOnceAndKeepsItsNameAndColor) {
    const ScriptProject project({{QStringLiteral("a"), QStringLiteral("b")}});
    project->voices().assignVoice({project.id(0)}, ana);
    project->voices().assignVoice({project.id(1)}, {ana.elevenLabsVoiceId, QStringLiteral("Renamed")});
    project->voices().assignVoice({project.id(1)}, ben);
    const QList<model::ProjectVoice> &voices = project->project().voices;
    ASSERT_EQ(voices.size(), 2);
    EXPECT_EQ(voices[0].castName, QStringLiteral("Ana"));
    EXPECT_EQ(voices[0].colorStripeHex, castPalette().at(1));
    EXPECT_EQ(voices[1].colorStripeHex, castPalette().at(2));
    EXPECT_EQ(project.line(1).voiceId, voices[1].id);
}

TEST(VoiceCasting, UndoTakesBackTheVoiceAndItsColor) {
    const ScriptProject project({{QStringLiteral("a"), QStringLiteral("b")}});
    project->voices().assignVoice({project.id(0), project.id(1)}, ana);
    EXPECT_EQ(project->undoManager().undoActionName(), QStringLiteral("Change Voice"));
    project->undoManager().undo();
    EXPECT_TRUE(project->project().voices.isEmpty());
    EXPECT_EQ(project->voices().projectVoiceFor(project.id(1)), nullptr);
    EXPECT_EQ(project->voices().nextCastColor(), castPalette().at(1));
}

TEST(VoiceCasting, CastingTheSameVoiceAgainIsNoStepAndKeepsRedo) {
    const ScriptProject project({{QStringLiteral("a")}});
    project->voices().assignVoice({project.id(0)}, ana);
    project->voices().assignVoice({project.id(0)}, ben);
    project->undoManager().undo();
    project->voices().assignVoice({project.id(0)}, ana);
    EXPECT_TRUE(project->undoManager().canRedo());
    project->undoManager().undo();
    EXPECT_FALSE(project->undoManager().canUndo());
}

TEST(VoiceCasting, CastingOnDeletedLinesDoesNothing) {
    const ScriptProject project({{QStringLiteral("a")}});
    project->voices().assignVoice({model::LineId::create()}, ana);
    EXPECT_TRUE(project->project().voices.isEmpty());
    EXPECT_FALSE(project->undoManager().canUndo());
}

TEST(VoiceCasting, TheTwentyColorsRepeat) {
    const ScriptProject project({{QStringLiteral("a")}});
    EXPECT_EQ(castPalette().size(), 20);
    EXPECT_EQ(castPalette().first(), QStringLiteral("#E63D3D"));
    for (int i = 1; i < 20; ++i)
        EXPECT_EQ(project->voices().nextCastColor(), castPalette().at(i));
    EXPECT_EQ(project->voices().nextCastColor(), castPalette().first());
}

} // namespace orlenta::controller
