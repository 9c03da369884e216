#include "shell/tags/TagPalette.h"

#include <QtGui/QAction>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QMenu>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QToolButton>

#include "controller/document/UndoManager.h"
#include "controller/script/TagEditing.h"
#include "shell/editor/ScriptEditorFixture.h"
#include "shell/menus/ProjectActions.h"
#include "shell/ShellSession.h"
#include "shell/tags/TagChip.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

const QStringList helloAndSecond{QStringLiteral("Hello World"), QStringLiteral("Second.")};

class TagPaletteTest : public ScriptEditorFixture {
protected:
    void TearDown() override {
        editor.reset();
        Theme::setUiScale(1.0);
        Theme::apply(Appearance::Light);
    }

    void openExpanded(const QSize &size = {760, 600}) {
        open(projectWith(helloAndSecond), size);
        controller->tagEditing().toggleTagToolbarExpanded();
        settle();
    }
    static void settle() {
        for (int round = 0; round < 5; ++round) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }

    [[nodiscard]] TagPalette &palette() const { return *editor->findChild<TagPalette *>(); }
    /// The visible chip with that label, or null.
    [[nodiscard]] TagChip *chip(const QString &label) const {
        return qobject_cast<TagChip *>(testing::buttonNamed(palette(), label));
    }
    [[nodiscard]] QToolButton *toggle() const { return palette().findChild<QToolButton *>(); }
    [[nodiscard]] ScriptTextField &field(qsizetype index) const { return rowAt(index)->textField(); }
    /// Puts the caret into the line's text and selects this range.
    void edit(qsizetype index, const controller::TextRange &range) {
        editor->commands().edit(idAt(index));
        ASSERT_TRUE(hasCaret(index));
        field(index).setSourceSelection(range);
    }
    [[nodiscard]] QStringList chipLabels() const {
        QStringList labels;
        for (const TagChip *candidate : palette().findChildren<TagChip *>())
            if (candidate->isVisible())
                labels.append(candidate->text());
        return labels;
    }
};

TEST_F(TagPaletteTest, ShowsAMenuOrARowOfChipsForEachCategory) {
    open(projectWith(helloAndSecond));
    EXPECT_FALSE(palette().isVisible());
    edit(0, {5, 0});
    settle();
    EXPECT_EQ(chipLabels(), QStringList({QStringLiteral("Emotion"), QStringLiteral("Vocal"), QStringLiteral("Pacing"),
                                         QStringLiteral("Character"), QStringLiteral("STRESS")}));
    QStringList pacing;
    for (const QAction *action : chip(QStringLiteral("Pacing"))->menu()->actions())
        pacing.append(action->text());
    EXPECT_EQ(pacing,
              QStringList({QStringLiteral("pause ..."), QStringLiteral("long pause —"), QStringLiteral("breathes"),
                           QStringLiteral("slows down"), QStringLiteral("rushed")}));
    EXPECT_EQ(toggle()->toolTip(), QStringLiteral("Expand tag palette (Ctrl+Shift+T)"));

    QTest::mouseClick(toggle(), Qt::LeftButton);
    settle();
    EXPECT_EQ(toggle()->toolTip(), QStringLiteral("Collapse tag palette (Ctrl+Shift+T)"));
    EXPECT_EQ(chipLabels().size(), 20);
    EXPECT_EQ(chip(QStringLiteral("Emotion")), nullptr);
    const int warm = chip(QStringLiteral("warm"))->mapTo(&palette(), QPoint()).y();
    EXPECT_GT(chip(QStringLiteral("sighs"))->mapTo(&palette(), QPoint()).y(), warm);
    EXPECT_EQ(chip(QStringLiteral("STRESS"))->toolTip(),
              QStringLiteral("Capitalize selected text for emphasis (Alt+Shift+S)"));
}

TEST_F(TagPaletteTest, TheMenuCommandTogglesTheFormAndItsOwnTitle) {
    open(projectWith(helloAndSecond));
    const ProjectActions actions(*session);
    editor->addAction(actions[CommandId::ToggleTagToolbar]);
    EXPECT_EQ(actions[CommandId::ToggleTagToolbar]->text(), QStringLiteral("Expand Tag Toolbar"));
    edit(0, {5, 0});
    QTest::keyClick(&field(0), Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(controller->tagEditing().tagToolbarExpanded());
    EXPECT_EQ(actions[CommandId::ToggleTagToolbar]->text(), QStringLiteral("Compact Tag Toolbar"));
    QTest::mouseClick(toggle(), Qt::LeftButton);
    EXPECT_EQ(actions[CommandId::ToggleTagToolbar]->text(), QStringLiteral("Expand Tag Toolbar"));
    EXPECT_TRUE(field(0).hasFocus());
}

TEST_F(TagPaletteTest, ClickingAChipInsertsTheTagAtTheCaretAndKeepsTheFocusInTheText) {
    openExpanded();
    edit(0, {5, 0});
    QTest::mouseClick(chip(QStringLiteral("whispers")), Qt::LeftButton);
    EXPECT_EQ(textAt(0), QStringLiteral("Hello [whispers] World"));
    EXPECT_EQ(field(0).sourceText(), textAt(0));
    EXPECT_TRUE(field(0).hasFocus());
    EXPECT_EQ(field(0).sourceSelection(), (controller::TextRange{16, 0}));
    QTest::keyClicks(&field(0), QStringLiteral("!"));
    EXPECT_EQ(textAt(0), QStringLiteral("Hello [whispers]! World"));
    QTest::keyClick(&field(0), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&field(0), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(textAt(0), QStringLiteral("Hello World"));
    EXPECT_EQ(field(0).sourceText(), textAt(0));
}

TEST_F(TagPaletteTest, ClickingBetweenChipsKeepsTheFocusInTheText) {
    openExpanded();
    edit(0, {2, 3});
    const QWidget *area = palette().findChild<QScrollArea *>()->viewport();
    QTest::mouseClick(const_cast<QWidget *>(area), Qt::LeftButton, {}, area->rect().bottomRight() - QPoint(2, 2));
    EXPECT_TRUE(field(0).hasFocus());
    EXPECT_EQ(field(0).sourceSelection(), (controller::TextRange{2, 3}));
}

TEST_F(TagPaletteTest, ChoosingATagFromAMenuInsertsItAtTheCaret) {
    open(projectWith(helloAndSecond));
    edit(0, {5, 0});
    QMenu *menu = chip(QStringLiteral("Emotion"))->menu();
    const auto choose = [menu] {
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    };
    QObject::connect(menu, &QMenu::aboutToShow, menu, choose, Qt::QueuedConnection);
    QSignalSpy hidden(menu, &QMenu::aboutToHide);
    // Before Qt 6.8, returns when the menu has closed; since then, immediately.
    QTest::mousePress(chip(QStringLiteral("Emotion")), Qt::LeftButton);
    ASSERT_TRUE(!hidden.isEmpty() || hidden.wait());
    EXPECT_EQ(textAt(0), QStringLiteral("Hello [excited] World"));
    EXPECT_EQ(controller->selection().editingLineId(), idAt(0));
    // Not every platform reactivates the window after a menu has closed.
    editor->activateWindow();
    EXPECT_TRUE(hasCaret(0));
    EXPECT_EQ(field(0).sourceSelection(), (controller::TextRange{15, 0}));
}

TEST_F(TagPaletteTest, StressTogglesTheSelectedTextAndKeepsItSelected) {
    open(projectWith(helloAndSecond));
    edit(0, {6, 5});
    QTest::mouseClick(chip(QStringLiteral("STRESS")), Qt::LeftButton);
    EXPECT_EQ(textAt(0), QStringLiteral("Hello WORLD"));
    EXPECT_EQ(field(0).sourceSelection(), (controller::TextRange{6, 5}));
    QTest::keyClick(&field(0), Qt::Key_S, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(textAt(0), QStringLiteral("Hello world"));
    EXPECT_EQ(field(0).sourceSelection(), (controller::TextRange{6, 5}));
    EXPECT_EQ(controller->undoManager().undoActionName(), QStringLiteral("Insert Tag"));
    QTest::keyClick(&field(0), Qt::Key_Escape);
    QTest::keyClick(&editor->list(), Qt::Key_S, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(textAt(0), QStringLiteral("Hello WORLD"));
}

TEST_F(TagPaletteTest, PressingAChipByKeyInsertsAtTheLastCaretPosition) {
    openExpanded();
    edit(0, {5, 0});
    QTest::keyClick(&field(0), Qt::Key_Escape);
    TagChip *sad = chip(QStringLiteral("sad"));
    sad->setFocus(Qt::TabFocusReason);
    ASSERT_TRUE(sad->hasFocus());
    QTest::keyClick(sad, Qt::Key_Return);
    QTest::keyClick(sad, Qt::Key_Space);
    EXPECT_EQ(textAt(0), QStringLiteral("Hello [sad] [sad] World"));
    EXPECT_TRUE(sad->hasFocus());
}

TEST_F(TagPaletteTest, IsOnlyEnabledWithOneSelectedLine) {
    openExpanded();
    EXPECT_TRUE(chip(QStringLiteral("sad"))->isEnabled());
    controller->selection().selectAll();
    EXPECT_FALSE(chip(QStringLiteral("sad"))->isEnabled());
    EXPECT_FALSE(chip(QStringLiteral("STRESS"))->isEnabled());
    EXPECT_TRUE(toggle()->isEnabled());
    QTest::keyClick(&editor->list(), Qt::Key_S, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_FALSE(controller->undoManager().canUndo());
    controller->selection().selectAlone(idAt(1));
    EXPECT_TRUE(chip(QStringLiteral("sad"))->isEnabled());
}

TEST_F(TagPaletteTest, ChipsAreReadableInTheirCategorysColours) {
    for (const ThemeColors *theme : {&ThemeColors::light(), &ThemeColors::dark()}) {
        QSet<QRgb> fills;
        for (const tags::TagCategory category :
             {tags::TagCategory::Stress, tags::TagCategory::Emotion, tags::TagCategory::Vocal,
              tags::TagCategory::Pacing, tags::TagCategory::Character}) {
            const TagChipColors colors = TagChipColors::of(category, theme->palette());
            EXPECT_GE(contrastRatio(colors.fill, colors.text), 4.5) << tags::rawValue(category).toStdString();
            fills.insert(colors.fill.rgb());
        }
        EXPECT_EQ(fills.size(), 5);
        EXPECT_EQ(TagChipColors::of(tags::TagCategory::Stress, theme->palette()).text, theme->text);
    }
    EXPECT_EQ(TagChipColors::of(tags::TagCategory::Emotion, ThemeColors::dark().palette()).fill.rgb(),
              QColor::fromRgbF(0.34F, 0.17F, 0.24F).rgb());
}

TEST_F(TagPaletteTest, FitsAtEveryScaleAndWidthAndLeavesRoomForTheList) {
    openExpanded();
    for (const double scale : {1.0, 1.5, 2.0}) {
        Theme::setUiScale(scale);
        for (const QSize size : {QSize(0, 300), QSize(0, 600), QSize(560, 300), QSize(760, 420), QSize(1200, 700)}) {
            for (int form = 0; form < 2; ++form) {
                editor->resize(QSize(editor->minimumWidth(), 0).expandedTo(size * scale));
                settle();
                const std::string where = QStringLiteral("scale %1 width %2 height %3 form %4")
                                              .arg(scale)
                                              .arg(editor->width())
                                              .arg(editor->height())
                                              .arg(form)
                                              .toStdString();
                const QStringList clipped = testing::clippedTexts(palette());
                EXPECT_TRUE(clipped.isEmpty()) << where << ": " << clipped.join(QStringLiteral("; ")).toStdString();
                EXPECT_TRUE(testing::unnamedControls(palette()).isEmpty()) << where;
                for (const TagChip *shown : palette().findChildren<TagChip *>())
                    if (shown->isVisible()) {
                        EXPECT_TRUE(shown->parentWidget()->rect().contains(shown->geometry()))
                            << where << ": " << shown->text().toStdString();
                    }
                for (const QWidget *part : palette().findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
                    if (part->isVisible()) {
                        EXPECT_TRUE(palette().rect().contains(part->geometry()))
                            << where << ": " << part->metaObject()->className();
                    }
                EXPECT_TRUE(editor->rect().contains(editor->list().geometry())) << where;
                EXPECT_GE(editor->list().height(), editor->height() / 5) << where;
                controller->tagEditing().toggleTagToolbarExpanded();
            }
        }
    }
}

} // namespace
} // namespace orlenta::shell
