#include <QtGui/QAccessible>
#include <QtWidgets/QLabel>

#include "shell/controls/NoticeLabel.h"
#include "shell/editor/row/DirectionStrip.h"
#include "shell/editor/ScriptEditorFixture.h"

namespace orlenta::shell {
namespace {

QString nameOf(QAccessibleInterface *interface) {
    return interface == nullptr ? QString() : interface->text(QAccessible::Name);
}

/// The descendant with that name, or null.
QAccessibleInterface *findNamed(QAccessibleInterface *from, const QString &name) {
    if (nameOf(from) == name)
        return from;
    for (int index = 0; from != nullptr && index < from->childCount(); ++index)
        if (QAccessibleInterface *found = findNamed(from->child(index), name); found != nullptr)
            return found;
    return nullptr;
}

class ScriptAccessibilityTest : public ScriptEditorFixture {
protected:
    [[nodiscard]] QAccessibleInterface *list() const { return QAccessible::queryAccessibleInterface(&editor->list()); }
    [[nodiscard]] QAccessibleInterface *item(qsizetype index) const {
        return QAccessible::queryAccessibleInterface(rowAt(index));
    }
};

TEST_F(ScriptAccessibilityTest, LinesAreListItemsNamedByNumberVoiceAndText) {
    open(projectWith({QStringLiteral("One."), QStringLiteral("[softly] Two\nand a half."), QString()}));
    EXPECT_EQ(list()->role(), QAccessible::List);
    ASSERT_EQ(list()->childCount(), 3);
    const QStringList names{QStringLiteral("Line 1, Narrator, One."),
                            QStringLiteral("Line 2, Narrator, [softly] Two and a half."),
                            QStringLiteral("Line 3, Narrator, empty")};
    for (int index = 0; index < 3; ++index) {
        QAccessibleInterface *line = list()->child(index);
        EXPECT_EQ(line->role(), QAccessible::ListItem);
        EXPECT_EQ(nameOf(line), names.at(index));
        EXPECT_EQ(line->parent(), list());
        EXPECT_EQ(list()->indexOfChild(line), index);
    }
    QTest::keyClick(&editor->list(), Qt::Key_Return);
    ASSERT_TRUE(hasCaret(0));
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" More."));
    EXPECT_EQ(nameOf(list()->child(0)), QStringLiteral("Line 1, Narrator, One. More."));
}

TEST_F(ScriptAccessibilityTest, TheCurrentLineIsTheFocusedItemAndSelectedLinesAreSelectedItems) {
    open(projectWith({QStringLiteral("One."), QStringLiteral("Two."), QStringLiteral("Three.")}));
    QTest::keyClick(&editor->list(), Qt::Key_Down);
    EXPECT_EQ(list()->focusChild(), item(1));
    QTest::keyClick(&editor->list(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(list()->focusChild(), item(2));
    for (const qsizetype index : {0, 1, 2}) {
        const QAccessible::State state = item(index)->state();
        EXPECT_TRUE(state.selectable && state.focusable);
        EXPECT_EQ(bool(state.selected), index > 0) << index;
        EXPECT_EQ(bool(state.focused), index == 2) << index;
    }
    item(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(selectedIndexes(), QList<qsizetype>({0}));
    rowAt(0)->focusControls();
    EXPECT_FALSE(item(0)->state().focused);
    EXPECT_EQ(nameOf(list()->focusChild()), QStringLiteral("Direction mode of line 1"));
}

TEST_F(ScriptAccessibilityTest, ALineSaysWhetherItHasAudioAndWhatItsButtonDoes) {
    open(projectWith({QStringLiteral("One."), QStringLiteral("Two.")}));
    addTake(1);
    EXPECT_EQ(item(0)->text(QAccessible::Description), QStringLiteral("No audio"));
    EXPECT_EQ(item(1)->text(QAccessible::Description), QStringLiteral("Has audio"));
    EXPECT_NE(findNamed(item(0), QStringLiteral("Generate line 1")), nullptr);
    EXPECT_NE(findNamed(item(1), QStringLiteral("Regenerate line 2")), nullptr);
}

TEST_F(ScriptAccessibilityTest, ALongScriptExposesOnlyItsExistingRowsAndTheScrollBar) {
    QStringList texts;
    for (int line = 1; line <= 2000; ++line)
        texts.append(QStringLiteral("Text %1.").arg(line));
    open(projectWith(texts));
    controller->selection().selectAlone(idAt(1500));
    EXPECT_LT(list()->childCount(), 40);
    EXPECT_EQ(nameOf(list()->focusChild()), QStringLiteral("Line 1501, Narrator, Text 1501."));
    EXPECT_EQ(list()->child(list()->childCount() - 1)->role(), QAccessible::ScrollBar);
    const int at = list()->indexOfChild(list()->focusChild());
    ASSERT_GT(at, 0);
    EXPECT_EQ(nameOf(list()->child(at - 1)), QStringLiteral("Line 1500, Narrator, Text 1500."));
}

TEST_F(ScriptAccessibilityTest, MessagesAndReadingsHaveAccessibleNames) {
    open(projectWith({QStringLiteral("One."), QStringLiteral("Two.")}));
    addTake(1);
    QAccessibleInterface *window = QAccessible::queryAccessibleInterface(editor.get());
    controller->setSpotError(QStringLiteral("Audio import failed: a & b"));
    QAccessibleInterface *notice = findNamed(window, QStringLiteral("Audio import failed: a & b"));
    ASSERT_NE(notice, nullptr);
    EXPECT_EQ(notice->role(), QAccessible::Notification);
    EXPECT_EQ(nameOf(notice->parent()), QStringLiteral("Message"));
    // The label says 0:03; of a take of 0.9 seconds it would say 0:00.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return findNamed(window, QStringLiteral("Duration of line 2, 3.0 seconds")) != nullptr; }));

    DirectionStrip strip;
    DirectionContent content;
    content.isRecording = true;
    content.recordingTime = QStringLiteral("0:04");
    content.error = QStringLiteral("Couldn't start recording.");
    strip.setContent(1, content);
    QAccessibleInterface *direction = QAccessible::queryAccessibleInterface(&strip);
    EXPECT_NE(findNamed(direction, QStringLiteral("Recording time of line 1, 0:04")), nullptr);
    QAccessibleInterface *problem =
        findNamed(direction, QStringLiteral("Recording problem on line 1: Couldn't start recording."));
    ASSERT_NE(problem, nullptr);
    EXPECT_EQ(problem->role(), QAccessible::Notification);
}

} // namespace
} // namespace orlenta::shell
