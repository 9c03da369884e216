#include "controller/commands/CommandTable.h"

#include <gtest/gtest.h>
#include <QtCore/QHash>
#include <QtCore/QSet>

namespace orlenta::controller {
namespace {

std::string described(const Command &command) {
    return CommandTable::groupTitle(command.group).toStdString() + ": " + command.title.toStdString();
}

TEST(CommandTableTest, NoKeyTriggersTwoCommandsInOnePlace) {
    QSet<QString> keysOfMenus;
    QHash<CommandGroup, QSet<QString>> keysOfPlaces;
    for (const Command &command : CommandTable::all())
        for (const QString &key : command.keys) {
            QSet<QString> &taken = CommandTable::isMenu(command.group) ? keysOfMenus : keysOfPlaces[command.group];
            // In a waveform the arrow keys move the playhead; in a line's other controls they move the focus.
            const bool isShared = command.id == CommandId::MovePlayhead;
            EXPECT_FALSE(taken.contains(key) && !isShared) << described(command) << ", " << key.toStdString();
            // A menu would take the key first.
            EXPECT_FALSE(!CommandTable::isMenu(command.group) && keysOfMenus.contains(key))
                << described(command) << ", " << key.toStdString();
            taken.insert(key);
        }
}

TEST(CommandTableTest, OnlySpaceIsACommandAmongTheKeysThatType) {
    for (const Command &command : CommandTable::all())
        for (const QString &key : command.keys) {
            const bool types = !key.contains(QLatin1String("Ctrl+")) && !key.contains(QLatin1String("Alt+")) &&
                               key.section(QLatin1Char('+'), -1).size() <= 1;
            EXPECT_FALSE(types) << described(command) << ", " << key.toStdString();
        }
}

TEST(CommandTableTest, EveryCommandHasOneEntryWithATitleAndATipOrKey) {
    QSet<CommandId> seen;
    for (const Command &command : CommandTable::all()) {
        EXPECT_FALSE(seen.contains(command.id)) << described(command);
        seen.insert(command.id);
        EXPECT_EQ(&CommandTable::command(command.id), &command);
        EXPECT_FALSE(command.title.isEmpty());
        EXPECT_FALSE(CommandTable::isMenu(command.group) ? command.tip.isEmpty() : command.keys.isEmpty())
            << described(command);
    }
    EXPECT_EQ(seen.size(), static_cast<int>(CommandId::LeaveVoiceSearch) + 1);
}

} // namespace
} // namespace orlenta::controller
