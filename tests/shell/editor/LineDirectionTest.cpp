#include <QtCore/QMimeData>
#include <QtGui/QDropEvent>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "controller/document/UndoManager.h"
#include "controller/takes/LineRuntime.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "shell/editor/row/DirectionStrip.h"
#include "shell/editor/row/NotesField.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/editor/ScriptEditorFixture.h"
#include "shell/theme/Theme.h"
#include "support/SoundServerSession.h"
#include "support/TestTone.h"

namespace orlenta::shell {
namespace {

constexpr int deadline = 20000;
const QString noServer = QStringLiteral("Couldn't start recording. The sound server is not available.");

/// An editor with three lines and helpers for their direction.
class LineDirectionTest : public ScriptEditorFixture {
protected:
    using ScriptEditorFixture::ScriptEditorFixture;

    void SetUp() override {
        open(projectWith({QStringLiteral("One."), QStringLiteral("Two."), QStringLiteral("Three.")}));
    }
    template <typename Widget>
    Widget *control(qsizetype index, const QString &name) {
        const QString full = QStringLiteral("%1 line %2").arg(name).arg(index + 1);
        for (Widget *widget : rowAt(index)->template findChildren<Widget *>())
            if ((widget->accessibleName() + QLatin1Char(',')).startsWith(full + QLatin1Char(',')) &&
                widget->isVisible())
                return widget;
        return nullptr;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    [[nodiscard]] const model::ProjectLine &line(qsizetype index) const {
        return *controller->lines().find(idAt(index));
    }
    [[nodiscard]] bool isVoiceDirected(qsizetype index) const {
        return controller->project().effectiveSettings(line(index)).directionMode == model::DirectionMode::Voice;
    }
    [[nodiscard]] QUrl directionURL(qsizetype index) const {
        return controller->runtime().state(idAt(index)).directionAudioURL;
    }
    [[nodiscard]] bool waitForDirection(qsizetype index) const {
        return QTest::qWaitFor([&] { return !directionURL(index).isEmpty(); }, deadline);
    }
    [[nodiscard]] bool shows(const QString &text) const {
        for (const QLabel *label : editor->findChildren<QLabel *>())
            if (label->isVisible() && label->text() == text)
                return true;
        return false;
    }
    [[nodiscard]] bool isWhollyInView(qsizetype index) const {
        const LineRow *row = rowAt(index);
        return row != nullptr && row->y() >= 0 && row->geometry().bottom() < editor->list().viewport()->height();
    }
    /// Drops files on a row's text, as a mouse would.
    void drop(qsizetype index, const QList<QUrl> &files) {
        QMimeData data;
        data.setUrls(files);
        QWidget *target = rowAt(index)->textField().viewport();
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent event(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(rowAt(index), &event);
    }
    [[nodiscard]] QUrl tone(const QString &name, double seconds = 0.5) const {
        return testing::writeTone(shell.path(name), seconds);
    }
};

TEST_F(LineDirectionTest, DroppingAnAudioFileOnARowDirectsTheLineByVoice) {
    EXPECT_EQ(rowAt(1)->findChild<DirectionStrip *>(), nullptr);
    drop(1, {tone(QStringLiteral("read.wav"), 2.0)});
    ASSERT_TRUE(waitForDirection(1));
    EXPECT_TRUE(isVoiceDirected(1));
    EXPECT_FALSE(isVoiceDirected(0));
    EXPECT_EQ(line(1).sourceRecordings.size(), 1);
    ASSERT_NE(control<QLabel>(1, QStringLiteral("Duration of the direction of")), nullptr);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return control<QLabel>(1, QStringLiteral("Duration of the direction of"))->text() == QStringLiteral("0:02");
        },
        deadline));
    EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Import Direction Audio"));
    controller->undoManager().undo();
    EXPECT_FALSE(isVoiceDirected(1));
    EXPECT_EQ(control<QLabel>(1, QStringLiteral("Duration of the direction of")), nullptr);
}

TEST_F(LineDirectionTest, ARejectedFileShowsWhyAndLeavesTheLineAlone) {
    QFile text(shell.path(QStringLiteral("script.txt")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no sound at all");
    text.close();
    drop(0, {QUrl::fromLocalFile(text.fileName())});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            return shows(QStringLiteral(
                "Audio import failed: Couldn't import this file. Only WAV, MP3, M4A, and AIFF are supported. "
                "(script.txt)"));
        },
        deadline));
    EXPECT_FALSE(isVoiceDirected(0));
    drop(0, {tone(QStringLiteral("a.wav")), tone(QStringLiteral("b.wav"))});
    EXPECT_TRUE(shows(QStringLiteral("Drop one audio file at a time on a line.")));
    EXPECT_TRUE(line(0).sourceRecordings.isEmpty());
}

TEST_F(LineDirectionTest, TheImportPanelFiltersAudioAndImportsTheChosenFile) {
    testing::pressKeyOf(CommandId::ImportDirection);
    auto *panel = editor->window()->findChild<QFileDialog *>();
    ASSERT_NE(panel, nullptr);
    EXPECT_EQ(panel->windowTitle(), QStringLiteral("Import Direction Audio"));
    EXPECT_TRUE(panel->nameFilters().constFirst().contains(QStringLiteral("*.m4a")));
    Q_EMIT panel->fileSelected(tone(QStringLiteral("chosen.wav")).toLocalFile());
    panel->reject();
    EXPECT_TRUE(waitForDirection(0));
}

TEST_F(LineDirectionTest, TheModeSwitchTogglesTheStripOfAllSelectedLines) {
    press(Qt::Key_Down, Qt::ShiftModifier);
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    EXPECT_TRUE(isVoiceDirected(0) && isVoiceDirected(1));
    EXPECT_FALSE(isVoiceDirected(2));
    EXPECT_NE(control<QPushButton>(0, QStringLiteral("Record direction for")), nullptr);
    EXPECT_NE(control<QPushButton>(1, QStringLiteral("Import direction audio for")), nullptr);
    EXPECT_EQ(control<QPushButton>(2, QStringLiteral("Record direction for")), nullptr);
    control<QToolButton>(0, QStringLiteral("Direction mode of"))->click();
    EXPECT_FALSE(isVoiceDirected(0) || isVoiceDirected(1));
    EXPECT_EQ(control<QPushButton>(0, QStringLiteral("Record direction for")), nullptr);
}

TEST_F(LineDirectionTest, UndoRestoresDeletedDirectionAndGeneratedAudio) {
    drop(0, {tone(QStringLiteral("read.wav"))});
    ASSERT_TRUE(waitForDirection(0));
    control<QToolButton>(0, QStringLiteral("Delete direction audio for"))->click();
    EXPECT_TRUE(directionURL(0).isEmpty());
    EXPECT_NE(control<QPushButton>(0, QStringLiteral("Record direction for")), nullptr);
    controller->undoManager().undo();
    EXPECT_FALSE(directionURL(0).isEmpty());
    focusList();
    testing::pressKeyOf(CommandId::DeleteDirection);
    EXPECT_TRUE(directionURL(0).isEmpty());

    addTake(0);
    editor->commands().deleteTake(idAt(0));
    EXPECT_FALSE(controller->runtime().hasGeneratedAudio(idAt(0)));
    controller->undoManager().undo();
    EXPECT_TRUE(controller->runtime().hasGeneratedAudio(idAt(0)));
}

TEST_F(LineDirectionTest, NotesAreEditedInPlaceAndHiddenWhenEmpty) {
    testing::pressKeyOf(CommandId::EditNotes);
    auto *notes = qobject_cast<NotesField *>(QApplication::focusWidget());
    ASSERT_NE(notes, nullptr);
    const int bare = rowAt(1)->height();
    EXPECT_GT(rowAt(0)->height(), bare);
    QTest::keyClicks(notes, QStringLiteral("softer"));
    EXPECT_EQ(line(0).notes, QStringLiteral("softer"));
    EXPECT_TRUE(controller->hasUnsavedChanges());
    press(Qt::Key_Escape);
    EXPECT_TRUE(editor->list().hasFocus());
    EXPECT_TRUE(notes->isVisible());
    testing::pressKeyOf(CommandId::EditNotes);
    QTest::keyClick(notes, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(notes, Qt::Key_Delete);
    press(Qt::Key_Escape);
    EXPECT_EQ(line(0).notes, QString());
    EXPECT_FALSE(notes->isVisible());
    EXPECT_EQ(rowAt(0)->height(), bare);
}

TEST_F(LineDirectionTest, NotesKeepTheCaretAndEveryCharacterThatWasNotTyped) {
    const QString firm = QStringLiteral("Second") + QChar(QChar::Nbsp) + QStringLiteral("half.");
    const QString written = QStringLiteral("First.\r\n") + firm;
    controller->lines().setNotes(idAt(0), written);
    testing::pressKeyOf(CommandId::EditNotes);
    auto *notes = qobject_cast<NotesField *>(QApplication::focusWidget());
    ASSERT_NE(notes, nullptr);
    QTextCursor caret = notes->textCursor();
    caret.setPosition(3);
    notes->setTextCursor(caret);
    editor->list().refreshRows();
    EXPECT_EQ(notes->textCursor().position(), 3);
    EXPECT_EQ(line(0).notes, written);
    QTest::keyClicks(notes, QStringLiteral("!"));
    editor->list().refreshRows();
    EXPECT_EQ(line(0).notes, QStringLiteral("Fir!st.\r\n") + firm);
    EXPECT_EQ(notes->textCursor().position(), 4);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(line(0).notes, written);
}

TEST_F(LineDirectionTest, RecordingWithoutASoundServerShowsWhyItFails) {
    testing::pressKeyOf(CommandId::Record);
    EXPECT_TRUE(QTest::qWaitFor([&] { return shows(noServer); }, deadline));
}

TEST_F(LineDirectionTest, ARecordingErrorAtTheLowerEdgeScrollsIntoView) {
    open(projectWith(QStringList(20, QStringLiteral("One of many lines."))));
    controller->selection().selectAlone(idAt(12));
    ASSERT_TRUE(isWhollyInView(12));
    const int bare = rowAt(12)->height();
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(noServer); }, deadline));
    EXPECT_GT(rowAt(12)->height(), bare);
    EXPECT_TRUE(isWhollyInView(12));
}

TEST_F(LineDirectionTest, ImportingOrSwitchingTheModeClearsARecordingError) {
    const auto fail = [this] {
        focusList();
        testing::pressKeyOf(CommandId::Record);
        return QTest::qWaitFor([&] { return shows(noServer); }, deadline);
    };
    ASSERT_TRUE(fail());
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    EXPECT_TRUE(isVoiceDirected(0));
    EXPECT_FALSE(shows(noServer));
    ASSERT_TRUE(fail());
    controller->undoManager().undo();
    EXPECT_FALSE(isVoiceDirected(0));
    EXPECT_EQ(control<QPushButton>(0, QStringLiteral("Record direction for")), nullptr);
    ASSERT_TRUE(fail());
    drop(0, {tone(QStringLiteral("read.wav"))});
    ASSERT_TRUE(waitForDirection(0));
    EXPECT_FALSE(shows(noServer));
}

TEST_F(LineDirectionTest, KeysDoNotActOnHiddenDirectionAudio) {
    drop(0, {tone(QStringLiteral("read.wav"))});
    ASSERT_TRUE(waitForDirection(0));
    focusList();
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    ASSERT_FALSE(isVoiceDirected(0));
    testing::pressKeyOf(CommandId::PlayDirection);
    EXPECT_FALSE(playback->isCurrentSource(idAt(0)));
    testing::pressKeyOf(CommandId::DeleteDirection);
    EXPECT_FALSE(directionURL(0).isEmpty());
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    testing::pressKeyOf(CommandId::DeleteDirection);
    EXPECT_TRUE(directionURL(0).isEmpty());
}

TEST_F(LineDirectionTest, OtherTakesCanBeChosenWithoutAnActiveOne) {
    addTake(0);
    addTake(0);
    const model::TakeId first = line(0).takes.constFirst().id;
    editor->commands().deleteTake(idAt(0));
    const auto picker = [this] { return control<QToolButton>(0, QStringLiteral("Take of")); };
    ASSERT_NE(picker(), nullptr);
    EXPECT_EQ(picker()->text(), QStringLiteral("Choose Take"));
    EXPECT_TRUE(rowAt(0)->rect().contains(picker()->parentWidget()->geometry()));
    EXPECT_NE(control<QPushButton>(0, QStringLiteral("Regenerate")), nullptr);
    EXPECT_EQ(control<QToolButton>(0, QStringLiteral("Play")), nullptr);
    editor->commands().switchTake(idAt(0), first);
    EXPECT_EQ(picker()->text(), QStringLiteral("Take 1"));
    EXPECT_NE(control<QToolButton>(0, QStringLiteral("Play")), nullptr);

    addTake(0);
    const model::Take lost = line(0).takes.constLast();
    editor->commands().switchTake(idAt(0), first);
    ASSERT_TRUE(QFile::remove(controller->media().takeURL(lost).toLocalFile()));
    editor->commands().switchTake(idAt(0), lost.id);
    ASSERT_NE(picker(), nullptr);
    EXPECT_EQ(picker()->text(), QStringLiteral("Take 2 of 2, file missing"));
    EXPECT_EQ(control<QPushButton>(0, QStringLiteral("Generate"))->text(), QStringLiteral("Generate"));
}

TEST_F(LineDirectionTest, TheStripIsNamedAndUnclippedAtEveryScaleAndAppearance) {
    drop(0, {tone(QStringLiteral("read.wav"))});
    ASSERT_TRUE(waitForDirection(0));
    controller->selection().selectAlone(idAt(1));
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    controller->lines().setNotes(idAt(0), QStringLiteral("Softer at the end, and a breath before the name."));
    editor->resize(editor->minimumWidth(), 700);
    for (const Appearance appearance : {Appearance::Light, Appearance::Dark}) {
        for (const double scale : {1.0, 1.5, 2.0}) {
            Theme::apply(appearance);
            Theme::setUiScale(scale);
            for (int round = 0; round < 5; ++round) {
                QCoreApplication::sendPostedEvents();
                QCoreApplication::processEvents();
            }
            editor->resize(editor->minimumWidth(), 900);
            editor->list().scrollToTop();
            QCoreApplication::processEvents();
            for (const qsizetype index : {0, 1}) {
                const auto *strip = rowAt(index)->findChild<DirectionStrip *>();
                ASSERT_NE(strip, nullptr);
                EXPECT_GE(strip->width(), strip->minimumSizeHint().width()) << scale << " row " << index;
                EXPECT_GE(strip->height(), strip->minimumSizeHint().height()) << scale << " row " << index;
                for (const QAbstractButton *button : strip->findChildren<QAbstractButton *>())
                    if (button->isVisible()) {
                        EXPECT_GE(button->width(), button->minimumSizeHint().width()) << scale;
                        EXPECT_NE(button->accessibleName(), QString());
                        EXPECT_NE(button->toolTip(), QString());
                    }
            }
        }
    }
    Theme::setUiScale(1.0);
    Theme::apply(Appearance::Light);
}

struct OwnSoundServer {
    testing::SoundServerSession soundServer{testing::SoundServerSession::Kind::PulseAudio};
};

/// With a private sound server that has the microphone "mic_a".
class LineDirectionSoundTest : private OwnSoundServer, public LineDirectionTest {
protected:
    LineDirectionSoundTest() : LineDirectionTest(soundServer.address()) {}

    void SetUp() override {
        ASSERT_EQ(soundServer.failure(), QString());
        LineDirectionTest::SetUp();
        ASSERT_TRUE(QTest::qWaitFor([&] { return shell.devices.isInputAvailable(QStringLiteral("mic_a")); }, deadline));
        shell.defaults.setInputDeviceUID(QStringLiteral("mic_a"));
    }
    [[nodiscard]] bool waitForStop(qsizetype index) {
        return QTest::qWaitFor(
            [&] { return control<QPushButton>(index, QStringLiteral("Stop recording direction for")) != nullptr; },
            deadline);
    }
    [[nodiscard]] bool waitForRecordingTime(qsizetype index, const QString &time) {
        return QTest::qWaitFor(
            [&] {
                const auto *label = control<QLabel>(index, QStringLiteral("Recording time of"));
                return label != nullptr && label->text() == time;
            },
            deadline);
    }
    [[nodiscard]] bool waitForPlaying(qsizetype index) {
        return QTest::qWaitFor(
            [&] { return playback->isPlaying() && playback->currentlyPlayingLineID() == idAt(index); }, deadline);
    }
    testing::SoundServerSession &sound() { return soundServer; }
};

TEST_F(LineDirectionSoundTest, TheRecordButtonRecordsAndShowsTheElapsedTime) {
    testing::pressKeyOf(CommandId::SwitchDirectionMode);
    control<QPushButton>(0, QStringLiteral("Record direction for"))->click();
    ASSERT_TRUE(waitForStop(0));
    EXPECT_TRUE(waitForRecordingTime(0, QStringLiteral("0:01")));
    control<QPushButton>(0, QStringLiteral("Stop recording direction for"))->click();
    ASSERT_TRUE(waitForDirection(0));
    EXPECT_TRUE(isVoiceDirected(0));
    ASSERT_EQ(line(0).sourceRecordings.size(), 1);
    EXPECT_GE(line(0).sourceRecordings.constFirst().durationSeconds, 1.0);
    EXPECT_NE(control<WaveformBarsView>(0, QStringLiteral("Playhead of the direction of")), nullptr);
}

TEST_F(LineDirectionSoundTest, ATakeContinuesOutOfViewAndTheNextWaitsForItsEnd) {
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForStop(0));
    editor->resize(760, 260);
    controller->selection().selectAlone(idAt(2));
    EXPECT_TRUE(QTest::qWaitFor([&] { return session->recordings().state(idAt(0)).duration > 0.5; }, deadline));
    EXPECT_TRUE(session->recordings().state(idAt(0)).isRecording);
    controller->selection().selectAlone(idAt(0));
    focusList();
    testing::pressKeyOf(CommandId::Record);
    testing::pressKeyOf(CommandId::Record); // the final samples haven't arrived yet
    EXPECT_FALSE(shows(QStringLiteral("Recording is already in progress.")));
    EXPECT_TRUE(waitForDirection(0));
    EXPECT_TRUE(session->recordings().state(idAt(0)).isRecording);
    ASSERT_TRUE(waitForRecordingTime(0, QStringLiteral("0:01")));
    testing::pressKeyOf(CommandId::Record);
    EXPECT_TRUE(QTest::qWaitFor([&] { return line(0).sourceRecordings.size() == 2; }, deadline));
}

TEST_F(LineDirectionSoundTest, ASecondTakeEndsTheFirstAndEachIsStoredOnItsLine) {
    const controller::DirectionRecordings &recordings = session->recordings();
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForRecordingTime(0, QStringLiteral("0:01")));
    press(Qt::Key_Down);
    testing::pressKeyOf(CommandId::Record);
    EXPECT_FALSE(recordings.state(idAt(0)).isRecording);
    EXPECT_EQ(recordings.recordingLine(), idAt(1));
    ASSERT_TRUE(waitForDirection(0));
    EXPECT_GE(line(0).sourceRecordings.constFirst().durationSeconds, 1.0);
    ASSERT_TRUE(waitForRecordingTime(1, QStringLiteral("0:01")));
    testing::pressKeyOf(CommandId::Record);
    EXPECT_EQ(recordings.recordingLine(), std::nullopt);
    EXPECT_TRUE(waitForDirection(1));
    EXPECT_EQ(line(0).sourceRecordings.size(), 1);
}

TEST_F(LineDirectionSoundTest, RefusingToPlayKeepsAnUnreadMessage) {
    addTake(0);
    const QString kept = QStringLiteral("The recording is kept in \"Scene\".");
    controller->setSpotError(kept);
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForRecordingTime(0, QStringLiteral("0:01")));
    press(Qt::Key_Space);
    EXPECT_FALSE(playback->isPlaying());
    EXPECT_EQ(controller->spotError(), kept);
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForDirection(0));
    EXPECT_EQ(controller->spotError(), kept);
}

TEST_F(LineDirectionSoundTest, RecordingAtTheLowerEdgeScrollsTheStripIntoView) {
    open(projectWith(QStringList(20, QStringLiteral("One of many lines."))));
    controller->selection().selectAlone(idAt(12));
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForStop(12));
    EXPECT_TRUE(isWhollyInView(12));
}

TEST_F(LineDirectionSoundTest, TheErrorDisappearsWhenTheServerReturns) {
    sound().kill();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return shell.sound.state() == audio::SoundServer::State::Unavailable; }, deadline));
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(QTest::qWaitFor([&] { return shows(noServer); }, deadline));
    sound().restart();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !shows(noServer); }, deadline));
    EXPECT_EQ(shell.sound.state(), audio::SoundServer::State::Ready);
}

TEST_F(LineDirectionSoundTest, DeletingALineEndsItsTakeAndUndoRestoresBoth) {
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForRecordingTime(0, QStringLiteral("0:01")));
    const model::LineId id = idAt(0);
    controller->lines().deleteLine(id);
    EXPECT_TRUE(QTest::qWaitFor([&] { return session->isSettled(); }, deadline));
    controller->undoManager().undo();
    ASSERT_EQ(idAt(0), id);
    ASSERT_TRUE(waitForDirection(0));
    EXPECT_GE(line(0).sourceRecordings.constFirst().durationSeconds, 1.0);
}

TEST_F(LineDirectionSoundTest, UnpluggingTheMicrophoneKeepsThePartialTake) {
    testing::pressKeyOf(CommandId::Record);
    ASSERT_TRUE(waitForRecordingTime(0, QStringLiteral("0:01")));
    const QStringList modules = sound()
                                    .pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("modules")})
                                    .split(QLatin1Char('\n'));
    for (const QString &module : modules)
        if (module.contains(QStringLiteral("source_name=mic_a")))
            sound().remove(module.section(QLatin1Char('\t'), 0, 0));
    ASSERT_TRUE(waitForDirection(0));
    EXPECT_GE(line(0).sourceRecordings.constFirst().durationSeconds, 0.8);
    EXPECT_FALSE(session->recordings().state(idAt(0)).isRecording);
    EXPECT_TRUE(isVoiceDirected(0));
}

TEST_F(LineDirectionSoundTest, ThePlayButtonAndTheWaveformPlayTheDirection) {
    drop(1, {tone(QStringLiteral("read.wav"), 30.0)});
    ASSERT_TRUE(waitForDirection(1));
    control<QToolButton>(1, QStringLiteral("Play the direction of"))->click();
    ASSERT_TRUE(waitForPlaying(1));
    EXPECT_TRUE(playback->isPlayingSource(idAt(1)));
    auto *waveform = control<WaveformBarsView>(1, QStringLiteral("Playhead of the direction of"));
    EXPECT_TRUE(waveform->showsProgress());
    QTest::mouseClick(waveform, Qt::LeftButton, Qt::NoModifier, QPoint(waveform->width() / 2, waveform->height() / 2));
    EXPECT_TRUE(playback->isPlayingSource(idAt(1)));
    EXPECT_NEAR(playback->playbackProgress(), 0.5, 0.05);
    EXPECT_TRUE(QTest::qWaitFor([&] { return waveform->progress() > 0.5; }, deadline));
    control<QToolButton>(1, QStringLiteral("Stop the direction of"))->click();
    EXPECT_FALSE(playback->isPlaying());
    QTest::mouseClick(waveform, Qt::LeftButton, Qt::NoModifier, QPoint(waveform->width() / 4, 3));
    EXPECT_TRUE(playback->isPlayingSource(idAt(1)));
    EXPECT_NEAR(playback->playbackProgress(), 0.25, 0.05);
    EXPECT_FALSE(shell.routing.lastRoutingErrorMessage().has_value());
}

TEST_F(LineDirectionSoundTest, PlayAllPlaysTheLinesWithAudioAndReturnsToTheFirst) {
    addTake(0);
    addTake(2);
    controller->selection().selectAll();
    QList<model::LineId> walked;
    QObject::connect(playback, &audio::PlaybackController::currentlyPlayingLineIDChanged, editor.get(), [&] {
        if (const auto id = playback->currentlyPlayingLineID())
            walked.append(model::LineId(id->uuid()));
    });
    press(Qt::Key_Space);
    ASSERT_TRUE(waitForPlaying(0));
    EXPECT_TRUE(QTest::qWaitFor([&] { return walked.contains(idAt(2)) && !playback->isPlaying(); }, deadline));
    EXPECT_EQ(walked, QList<model::LineId>({idAt(0), idAt(2), idAt(0)}));
}

} // namespace
} // namespace orlenta::shell
