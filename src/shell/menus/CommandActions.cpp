#include "shell/menus/CommandActions.h"

#include <algorithm>

#include <QtGui/QKeyEvent>
#include <QtGui/QKeySequence>
#include <QtWidgets/QMenu>

#include "controller/commands/CommandTable.h"
#include "shell/theme/Icon.h"

namespace orlenta::shell {

using controller::Command;
using controller::CommandTable;

CommandActions::CommandActions(const QList<CommandId> &ids, QObject *parent) : QObject(parent) {
    for (const CommandId id : ids) {
        const Command &command = CommandTable::command(id);
        auto *action = new QAction(command.title, this);
        QList<QKeySequence> keys;
        for (const QString &key : command.keys)
            keys.append(QKeySequence(key));
        action->setShortcuts(keys);
        action->setToolTip(tipOf(id));
        action->setStatusTip(command.tip);
        if (!command.icon.isEmpty())
            action->setIcon(Icon::named(command.icon));
        m_actions.insert(id, action);
    }
}

QAction *CommandActions::operator[](CommandId id) const {
    Q_ASSERT(m_actions.contains(id));
    return m_actions.value(id);
}

void CommandActions::onTriggered(CommandId id, const std::function<void()> &carryOut) {
    connect((*this)[id], &QAction::triggered, this, carryOut);
}

void CommandActions::setEnabled(CommandId id, bool isEnabled) {
    QAction &action = *(*this)[id];
    action.setEnabled(isEnabled);
    action.setToolTip(isEnabled ? tipOf(id) : tipWithRequirement(tipOf(id), id));
}

QString CommandActions::refusalOf(const QKeyEvent &key) const {
    for (auto action = m_actions.cbegin(); action != m_actions.cend(); ++action)
        if (!action.value()->isEnabled() && isKeyOf(key, action.key()))
            return CommandTable::requirement(action.key());
    return {};
}

QAction *addCommand(QMenu &menu, CommandId id, const QString &title, const std::function<void()> &carryOut) {
    const Command &command = CommandTable::command(id);
    QAction *action = menu.addAction(Icon::named(command.icon), title, &menu, carryOut);
    if (!command.keys.isEmpty())
        action->setShortcut(QKeySequence(command.keys.first()));
    return action;
}

QString tipWithKey(const QString &text, CommandId id) {
    const QStringList &keys = CommandTable::command(id).keys;
    return keys.isEmpty()
               ? text
               : QStringLiteral("%1 (%2)").arg(text, QKeySequence(keys.first()).toString(QKeySequence::NativeText));
}

QString tipOf(CommandId id) {
    return tipWithKey(CommandTable::command(id).tip, id);
}

QString tipWithRequirement(const QString &tip, CommandId id) {
    const QString requirement = CommandTable::requirement(id);
    return requirement.isEmpty() ? tip : tip + u'\n' + requirement;
}

bool isKeyOf(const QKeyEvent &event, CommandId id) {
    // Treat keypad keys like the others. Shift+Tab has its own key code.
    Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    int key = event.key();
    if (key == Qt::Key_Backtab) {
        key = Qt::Key_Tab;
        modifiers |= Qt::ShiftModifier;
    }
    const QKeySequence pressed(QKeyCombination(modifiers, static_cast<Qt::Key>(key)));
    const QStringList &keys = CommandTable::command(id).keys;
    return std::any_of(keys.begin(), keys.end(), [&](const QString &text) { return QKeySequence(text) == pressed; });
}

} // namespace orlenta::shell
