#include "shell/menus/MenuBar.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include "controller/commands/CommandTable.h"
#include "shell/editor/DirectionActions.h"
#include "shell/menus/AppActions.h"
#include "shell/menus/CommandActions.h"
#include "shell/menus/MenuMnemonics.h"
#include "shell/menus/ProjectActions.h"
#include "shell/menus/ShortcutsDialog.h"
#include "shell/menus/TextKeys.h"

namespace orlenta::shell {
namespace {

using controller::Command;
using controller::CommandTable;

/// The window's action for a command, or null.
QAction *actionFor(CommandId id, const QList<const CommandActions *> &sets) {
    for (const CommandActions *set : sets)
        if (QAction *action = set->find(id); action != nullptr)
            return action;
    return nullptr;
}

void fill(QMenuBar &bar, const QList<const CommandActions *> &sets) {
    TextKeys::install();
    QMenu *menu = nullptr;
    auto group = controller::CommandGroup::File;
    bool isNewSection = false;
    for (const Command &command : CommandTable::all()) {
        if (!CommandTable::isMenu(command.group))
            break;
        isNewSection = isNewSection || command.section == controller::Section::New;
        QAction *action = actionFor(command.id, sets);
        if (action == nullptr)
            continue;
        if (menu == nullptr || command.group != group) {
            group = command.group;
            menu = bar.addMenu(u'&' + CommandTable::groupTitle(group));
            menu->setToolTipsVisible(true);
            MenuMnemonics::follow(*menu);
        } else if (isNewSection) {
            menu->addSeparator();
        }
        isNewSection = false;
        menu->addAction(action);
    }
    QObject::connect(actionFor(CommandId::KeyboardShortcuts, sets), &QAction::triggered, &bar,
                     [&bar] { ShortcutsDialog::showFor(*bar.window()); });
}

} // namespace

void fillMenuBar(QMenuBar &bar, const AppActions &app, const ProjectActions &project,
                 const DirectionActions &direction) {
    fill(bar, {&app, &project, &direction});
}

void fillMenuBar(QMenuBar &bar, const AppActions &app) {
    fill(bar, {&app});
}

} // namespace orlenta::shell
