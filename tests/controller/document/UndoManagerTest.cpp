#include "controller/document/UndoManager.h"

#include <gtest/gtest.h>
#include <QtCore/QStringList>
#include <QtTest/QSignalSpy>

namespace orlenta::controller {
namespace {

/// A number with undo: each change registers the opposite change, as the program's handlers do.
class UndoableNumber final {
public:
    explicit UndoableNumber(UndoManager &manager) : m_manager(manager) {}

    void set(int value, const QString &name) {
        m_manager.registerUndo([this, old = m_value, name] { set(old, name); });
        m_manager.setActionName(name);
        m_value = value;
    }
    [[nodiscard]] int value() const { return m_value; }

private:
    UndoManager &m_manager;
    int m_value = 0;
};

} // namespace

TEST(UndoManager, UndoAndRedoAlternateThroughTheSameHandlerAndKeepTheName) {
    UndoManager manager;
    UndoableNumber number(manager);
    number.set(1, QStringLiteral("One"));
    number.set(2, QStringLiteral("Two"));
    for (int round = 0; round < 3; ++round) {
        manager.undo();
        EXPECT_EQ(number.value(), 1);
        EXPECT_EQ(manager.undoActionName(), QStringLiteral("One"));
        EXPECT_EQ(manager.redoActionName(), QStringLiteral("Two"));
        manager.redo();
        EXPECT_EQ(number.value(), 2);
    }
    manager.undo();
    manager.undo();
    EXPECT_FALSE(manager.canUndo());
    manager.undo();
    EXPECT_EQ(number.value(), 0);
}

TEST(UndoManager, ANewActionDropsWhatCouldBeRedone) {
    UndoManager manager;
    UndoableNumber number(manager);
    number.set(1, QStringLiteral("One"));
    manager.undo();
    EXPECT_TRUE(manager.canRedo());
    number.set(5, QStringLiteral("Five"));
    EXPECT_FALSE(manager.canRedo());
    manager.redo();
    EXPECT_EQ(number.value(), 5);
}

TEST(UndoManager, AGroupIsUndoneAtOnceAndInReverse) {
    UndoManager manager;
    QStringList undone;
    manager.beginUndoGrouping();
    manager.beginUndoGrouping();
    manager.registerUndo([&] { undone.append(QStringLiteral("first")); });
    manager.endUndoGrouping();
    manager.registerUndo([&] { undone.append(QStringLiteral("second")); });
    manager.setActionName(QStringLiteral("Both"));
    manager.endUndoGrouping();
    EXPECT_EQ(manager.undoActionName(), QStringLiteral("Both"));
    manager.undo();
    EXPECT_EQ(undone, (QStringList{QStringLiteral("second"), QStringLiteral("first")}));
    EXPECT_FALSE(manager.canUndo());
}

TEST(UndoManager, AnEmptyGroupLeavesNoStep) {
    UndoManager manager;
    const QSignalSpy changed(&manager, &UndoManager::stateChanged);
    manager.beginUndoGrouping();
    manager.endUndoGrouping();
    EXPECT_FALSE(manager.canUndo());
    EXPECT_EQ(manager.groupingLevel(), 0);
}

} // namespace orlenta::controller
