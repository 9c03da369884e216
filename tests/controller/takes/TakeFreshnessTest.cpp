#include "controller/takes/TakeFreshness.h"

#include <gtest/gtest.h>

namespace orlenta::controller {
namespace {

class TakeFreshnessTest : public ::testing::Test {
protected:
    TakeFreshnessTest() {
        line.text = QStringLiteral("[calm] Hello.");
        line.voiceId = model::VoiceId::create();
        take.id = model::TakeId::create();
        take.voiceId = *line.voiceId;
        take.settingsSnapshot = project.effectiveSettings(line);
        take.characterCount = 13;
    }
    [[nodiscard]] TakeChange change() const { return changeSinceTake(project, line, take); }

    model::Project project = model::Project::makeNew(QStringLiteral("Scene"), base::Timestamp{});
    model::ProjectLine line = model::ProjectLine::makeNew();
    model::Take take;
};

TEST_F(TakeFreshnessTest, ATakeIsStaleOnceTextVoiceOrSettingsOfItsLineChange) {
    EXPECT_EQ(change(), TakeChange::None);
    line.settings->speed = 1.1;
    EXPECT_EQ(change(), TakeChange::Settings);
    line.voiceId = model::VoiceId::create();
    EXPECT_EQ(change(), TakeChange::Voice);
    line.text += QStringLiteral(" More.");
    EXPECT_EQ(change(), TakeChange::Text);
}

TEST_F(TakeFreshnessTest, TheDirectionModeCountsOnlyWithARecording) {
    line.settings->directionMode = model::DirectionMode::Voice;
    EXPECT_EQ(change(), TakeChange::None);
    line.activeSourceId = model::RecordingId::create();
    EXPECT_EQ(change(), TakeChange::Settings);
    // The recording is spoken, not the text.
    take.settingsSnapshot.directionMode = model::DirectionMode::Voice;
    line.text += QStringLiteral(" More.");
    EXPECT_EQ(change(), TakeChange::None);
}

TEST_F(TakeFreshnessTest, ATakeThatDoesNotKnowItsTextOrVoiceIsNotStaleForThem) {
    take.characterCount = 0;
    take.voiceId = model::VoiceId();
    line.text.clear();
    EXPECT_EQ(change(), TakeChange::None);
}

} // namespace
} // namespace orlenta::controller
