#include <QtTest/QSignalSpy>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QToolButton>

#include "controller/document/UndoManager.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/editor/ScriptEditorFixture.h"
#include "shell/windows/PlayingMark.h"
#include "support/SoundServerSession.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr int followingDeadline = 20000;

struct FollowingSoundServer {
    testing::SoundServerSession soundServer{testing::SoundServerSession::Kind::PulseAudio};
};

/// The script during playback, on a private sound server.
class PlaybackFollowingTest : private FollowingSoundServer, public ScriptEditorFixture {
protected:
    PlaybackFollowingTest() : ScriptEditorFixture(soundServer.address()) {}

    void SetUp() override {
        ASSERT_EQ(soundServer.failure(), QString());
        QStringList texts;
        for (int index = 0; index < 20; ++index)
            texts.append(u"Line."_s);
        open(projectWith(texts), {760, 420});
        ASSERT_TRUE(waitFor([this] { return shell.devices.isInputAvailable(u"mic_a"_s); }));
    }
    template <typename Condition>
    [[nodiscard]] static bool waitFor(Condition condition) {
        return QTest::qWaitFor(condition, followingDeadline);
    }
    [[nodiscard]] bool waitForProgress(double least) {
        return waitFor([this, least] { return playback->playbackProgress() > least; });
    }
    /// Waits until the playhead has moved a number of times.
    [[nodiscard]] bool waitForTicks(int ticks) {
        int seen = 0;
        const auto counting =
            QObject::connect(playback, &audio::PlaybackController::playbackProgressChanged, [&seen] { ++seen; });
        const bool hasMoved = waitFor([&seen, ticks] { return seen >= ticks; });
        QObject::disconnect(counting);
        return hasMoved;
    }
    [[nodiscard]] WaveformBarsView &waveform(qsizetype index) const {
        return *rowAt(index)->findChild<WaveformBarsView *>();
    }
    /// Advances Play All to the last line.
    [[nodiscard]] bool waitForLastLine() {
        playback->seek({idAt(0), controller->media().audioURL(*controller->lines().find(idAt(0)))}, 0.97);
        return waitFor([this] { return playback->currentlyPlayingLineID() == idAt(19); });
    }
};

class PaintCounter final : public QObject {
public:
    bool eventFilter(QObject *watched, QEvent *event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
    int paints = 0;
};

TEST_F(PlaybackFollowingTest, TheMovingPlayheadRepaintsOnlyTheWaveform) {
    addTake(0);
    editor->commands().play(idAt(0));
    ASSERT_TRUE(waitForProgress(0.05));
    QToolButton *stop = nullptr;
    for (auto *button : rowAt(0)->findChildren<QToolButton *>())
        if (button->accessibleName() == u"Stop line 1"_s)
            stop = button;
    ASSERT_NE(stop, nullptr);
    PaintCounter button;
    PaintCounter bars;
    const double before = waveform(0).progress();
    QSignalSpy announced(&waveform(0), &WaveformBarsView::positionAnnounced);
    stop->installEventFilter(&button);
    waveform(0).installEventFilter(&bars);
    ASSERT_TRUE(waitForTicks(10));
    EXPECT_GT(waveform(0).progress(), before);
    EXPECT_GT(bars.paints, 0);
    EXPECT_EQ(button.paints, 0);
    EXPECT_EQ(announced.count(), 0);
    // A refreshed row shows the same position.
    editor->list().refreshRow(idAt(0));
    EXPECT_NEAR(waveform(0).progress(), playback->playbackProgress(), 0.001);
}

TEST_F(PlaybackFollowingTest, ATakeDoesNotShowTheProgressOfAnother) {
    addTake(0);
    addTake(0);
    editor->commands().play(idAt(0));
    ASSERT_TRUE(waitForProgress(0.02));
    editor->commands().switchTake(idAt(0), controller->lines().find(idAt(0))->takes.constFirst().id);
    EXPECT_FALSE(playback->isPlaying());
    EXPECT_FALSE(waveform(0).showsProgress());
    EXPECT_EQ(waveform(0).progress(), 0.0);

    editor->commands().play(idAt(0));
    ASSERT_TRUE(waitForProgress(0.02));
    controller->undoManager().undo();
    ASSERT_TRUE(waitForTicks(3));
    EXPECT_EQ(waveform(0).progress(), 0.0);
    controller->undoManager().redo();
    EXPECT_GT(waveform(0).progress(), 0.02);
}

TEST_F(PlaybackFollowingTest, PlayAllScrollsTheNextLineIntoView) {
    addTake(0);
    addTake(19);
    editor->list().verticalScrollBar()->setValue(editor->list().verticalScrollBar()->maximum());
    ASSERT_FALSE(editor->list().isInView(idAt(0)));
    editor->commands().playWholeTab();
    EXPECT_TRUE(editor->list().isInView(idAt(0)));
    ASSERT_FALSE(editor->list().isInView(idAt(19)));
    ASSERT_TRUE(waitForLastLine());
    EXPECT_TRUE(editor->list().isInView(idAt(19)));
}

TEST_F(PlaybackFollowingTest, TheStatusLineTellsThePlaceInPlayAllAndLeadsBackToIt) {
    addTake(0);
    addTake(1);
    addTake(19);
    QWidget strip;
    PlayingMark mark(*playback, *editor, &strip);
    strip.show();
    EXPECT_FALSE(mark.isVisible());
    const auto button = [&mark](const QString &text) -> QAbstractButton * {
        for (QAbstractButton *candidate : mark.findChildren<QAbstractButton *>())
            if (candidate->isVisible() && candidate->text().startsWith(text))
                return candidate;
        return nullptr;
    };
    editor->commands().playWholeTab();
    ASSERT_NE(button(u"Playing 1 of 3"_s), nullptr);
    EXPECT_TRUE(waitFor([&] {
        const QAbstractButton *place = button(u"Playing"_s);
        return place != nullptr && place->text().endsWith(u"of 0:09"_s);
    }));
    EXPECT_EQ(button(u"Follow"_s), nullptr);
    QScrollBar &bar = *editor->list().verticalScrollBar();
    bar.setValue(bar.maximum());
    ASSERT_FALSE(editor->list().isInView(idAt(0)));
    ASSERT_NE(button(u"Follow"_s), nullptr);
    button(u"Follow"_s)->click();
    EXPECT_TRUE(editor->list().isInView(idAt(0)));
    EXPECT_EQ(button(u"Follow"_s), nullptr);
    editor->commands().stop();
    EXPECT_FALSE(mark.isVisible());
}

TEST_F(PlaybackFollowingTest, PlayAllDoesNotScrollOnceTheUserScrollsAwayOrTypes) {
    addTake(0);
    addTake(19);
    QScrollBar &bar = *editor->list().verticalScrollBar();
    const auto goOn = [&] {
        const int place = bar.value();
        ASSERT_TRUE(waitForLastLine());
        EXPECT_EQ(bar.value(), place);
        EXPECT_FALSE(editor->list().isInView(idAt(19)));
    };
    editor->commands().playWholeTab();
    bar.setValue(bar.maximum() / 2);
    ASSERT_FALSE(editor->list().isInView(idAt(0)));
    goOn();
    editor->commands().playWholeTab();
    editor->commands().edit(idAt(0));
    ASSERT_TRUE(hasCaret(0));
    ASSERT_TRUE(editor->list().isInView(idAt(0)));
    goOn();
    controller->selection().setEditingLineId({});
    playback->stop(audio::PlayheadReset::Reset);
    editor->commands().playWholeTab();
    rowAt(0)->editNotes();
    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
    ASSERT_TRUE(editor->list().isInView(idAt(0)));
    goOn();
}

} // namespace
} // namespace orlenta::shell
