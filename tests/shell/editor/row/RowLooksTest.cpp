#include <algorithm>

#include <QtCore/QFile>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QScrollBar>

#include "controller/casting/VoiceCasting.h"
#include "controller/document/TypingSession.h"
#include "controller/takes/MediaFiles.h"
#include "controller/takes/TakeEditing.h"
#include "shell/editor/list/RowDensities.h"
#include "shell/editor/list/TakeTimeScale.h"
#include "shell/editor/row/RowStatusMark.h"
#include "shell/editor/row/TakeLane.h"
#include "shell/editor/row/TakeStrip.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/editor/ScriptEditorFixture.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QStringList someTexts(int count) {
    QStringList texts;
    for (int index = 0; index < count; ++index)
        texts.append(u"The harbour lights went out one by one, and nobody on the quay said a word."_s);
    return texts;
}

/// What a row looks like in each density, state and width.
class RowLooksTest : public ScriptEditorFixture {
protected:
    [[nodiscard]] ScriptListView &list() const { return editor->list(); }
    [[nodiscard]] int unit() const { return Theme::unit(&list()); }
    [[nodiscard]] int compactHeight() const { return RowPlaces::compactHeight * unit(); }
    [[nodiscard]] QString status(qsizetype index) const {
        return rowAt(index)->findChild<RowStatusMark *>()->accessibleName();
    }
    static void settle() {
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }
};

TEST_F(RowLooksTest, CompactRowsAreOneLineHighAndTheCurrentRowKeepsItsPlace) {
    open(projectWith(someTexts(200)));
    list().verticalScrollBar()->setValue(4000);
    settle();
    LineRow *seen = list().rows().constFirst();
    for (LineRow *row : list().rows())
        if (row->y() > 0 && row->geometry().bottom() < list().viewport()->height())
            seen = row;
    const model::LineId id = seen->lineId();
    controller->selection().selectAlone(id);
    settle();
    const int y = list().rowFor(id)->y();
    editor->densities().toggle();
    EXPECT_EQ(list().rowFor(id)->y(), y);
    for (const LineRow *row : list().rows())
        if (list().isInView(row->lineId())) {
            EXPECT_EQ(row->height(), compactHeight());
        }
    editor->densities().toggle();
    EXPECT_EQ(list().rowFor(id)->y(), y);
    EXPECT_GT(list().rowFor(id)->height(), compactHeight());
}

TEST_F(RowLooksTest, ACompactRowOpensWhileItsTextOrItsControlsAreUsed) {
    open(projectWith(someTexts(4)));
    editor->densities().toggle();
    settle();
    EXPECT_FALSE(rowAt(0)->textField().isVisible());
    QTest::keyClick(&list(), Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    EXPECT_GT(rowAt(0)->height(), compactHeight());
    QTest::keyClicks(QApplication::focusWidget(), u"And then?"_s);
    EXPECT_TRUE(textAt(0).endsWith(u"And then?"_s));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    settle();
    EXPECT_TRUE(list().hasFocus());
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({0}));
    EXPECT_EQ(rowAt(0)->height(), compactHeight());

    QTest::keyClick(&list(), Qt::Key_Right);
    EXPECT_TRUE(rowAt(0)->isAncestorOf(QApplication::focusWidget()));
    EXPECT_GT(rowAt(0)->height(), compactHeight());
    EXPECT_EQ(rowAt(1)->height(), compactHeight());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    settle();
    EXPECT_TRUE(list().hasFocus());
    EXPECT_EQ(rowAt(0)->height(), compactHeight());
}

TEST_F(RowLooksTest, CompactRowsAreRememberedForTheirTab) {
    const model::Project project = projectWith(someTexts(4));
    open(project);
    editor->densities().toggle();
    RowDensities again(*controller, session->services().defaults);
    EXPECT_EQ(again.current(), RowDensity::Compact);
    again.toggle();
    EXPECT_EQ(RowDensities(*controller, session->services().defaults).current(), RowDensity::Comfortable);
}

TEST_F(RowLooksTest, EachStatusHasItsWords) {
    model::Project project = projectWith(someTexts(7), {u"Narrator"_s, u"Tam"_s});
    project.lines.update(project.tabs.first().lineIds.at(0), [](model::ProjectLine &line) { line.voiceId.reset(); });
    open(project, {760, 900});
    for (const qsizetype index : {2, 3, 4, 5, 6})
        addTake(index);
    controller->takes().setGenerating(controller::GenerationState::Generating, idAt(6));
    controller->typing().type(idAt(3), u"Another text."_s);
    controller->typing().commit();
    controller->voices().assignVoice({idAt(4)}, {u"voice-9"_s, u"Somebody"_s});
    addTake(5);
    const model::ProjectLine lost = *controller->lines().find(idAt(5));
    editor->commands().switchTake(idAt(5), lost.takes.constFirst().id);
    ASSERT_TRUE(QFile::remove(controller->media().takeURL(lost.takes.constLast()).toLocalFile()));
    editor->commands().switchTake(idAt(5), lost.takes.constLast().id);
    settle();
    EXPECT_EQ(status(0), u"Status of line 1, No voice"_s);
    EXPECT_EQ(status(1), u"Status of line 2, No audio yet"_s);
    EXPECT_EQ(status(2), QString());
    EXPECT_EQ(status(3), u"Status of line 4, Text changed"_s);
    EXPECT_EQ(status(4), u"Status of line 5, Voice changed"_s);
    EXPECT_EQ(status(5), u"Status of line 6, The audio file is missing"_s);
    EXPECT_EQ(status(6), u"Status of line 7, Generating"_s);
}

TEST_F(RowLooksTest, NeighboursInASelectionShareOneOutline) {
    open(projectWith(someTexts(3)));
    controller->selection().selectAll();
    settle();
    const ThemeColors &colors = ThemeColors::of(list().palette());
    const auto edge = [&](qsizetype index, int y) {
        return rowAt(index)->grab().toImage().pixelColor(rowAt(index)->width() / 2, y);
    };
    const int last = rowAt(1)->height() - 1;
    EXPECT_EQ(edge(0, rowAt(0)->height() - 1), colors.surfaceSelected);
    EXPECT_EQ(edge(1, 0), colors.surfaceSelected);
    EXPECT_EQ(edge(1, last), colors.surfaceSelected);
    controller->selection().selectAlone(idAt(1));
    settle();
    EXPECT_EQ(edge(1, 0), colors.window);
}

TEST_F(RowLooksTest, ButtonsOfFinishedLinesShowTheirWordsOnlyWhereTheUserIs) {
    open(projectWith(someTexts(3)));
    for (const qsizetype index : {0, 1})
        addTake(index);
    controller->selection().selectAlone(idAt(0));
    settle();
    const auto words = [&] {
        QStringList found;
        for (const QAbstractButton *button : editor->findChildren<QAbstractButton *>())
            if (button->isVisible() && button->accessibleName().contains(u"enerate line"_s))
                found.append(button->text());
        std::sort(found.begin(), found.end());
        return found;
    };
    EXPECT_EQ(words(), QStringList({QString(), u"Generate"_s, u"Regenerate"_s}));
}

TEST_F(RowLooksTest, TakesAreAsLongAsTheirTimeUnlessEachFillsItsLane) {
    open(projectWith(someTexts(2)));
    addTake(0);
    const auto *lane = rowAt(0)->findChild<TakeLane *>();
    // The take lasts three seconds, the lane five.
    const auto isScaled = [&] { return qAbs(lane->waveform().width() - lane->width() * 3 / 5) <= 1; };
    EXPECT_TRUE(QTest::qWaitFor(isScaled, 20000)) << lane->waveform().width() << " of " << lane->width();
    editor->timeScale().setShared(false);
    settle();
    EXPECT_EQ(lane->waveform().width(), lane->width());
}

TEST_F(RowLooksTest, TakesStandBesideTheTextInAWideList) {
    open(projectWith(someTexts(2)), {760, 600});
    addTake(0);
    settle();
    const auto takes = [&] { return rowAt(0)->findChild<TakeStrip *>()->geometry(); };
    EXPECT_GT(takes().top(), rowAt(0)->textField().geometry().center().y());
    const int narrow = rowAt(0)->height();
    editor->resize(RowPlaces::wideList * unit() + 40, 600);
    settle();
    EXPECT_GT(takes().left(), rowAt(0)->textField().geometry().right());
    EXPECT_LT(rowAt(0)->height(), narrow - 4 * unit());
    EXPECT_LE(rowAt(0)->textField().width(), (RowPlaces::longestText + 4) * unit());
}

TEST_F(RowLooksTest, ANarrowCompactListKeepsNumberInitialAndText) {
    open(projectWith(someTexts(2)), {380, 400});
    addTake(0);
    editor->densities().toggle();
    settle();
    EXPECT_EQ(rowAt(0)->height(), compactHeight());
    EXPECT_EQ(rowAt(0)->findChild<TakeStrip *>()->width(), 0);
}

} // namespace
} // namespace orlenta::shell
