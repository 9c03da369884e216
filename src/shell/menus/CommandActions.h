#pragma once

#include <functional>

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtGui/QAction>

#include "controller/commands/Command.h"

class QKeyEvent;
class QMenu;

namespace orlenta::shell {

using controller::CommandId;

/// Actions for a set of commands, each with its title, keys, icon and tool tip from the command table.
class CommandActions : public QObject {
    Q_OBJECT
public:
    /// The action of a command, which must be in the set.
    [[nodiscard]] QAction *operator[](CommandId id) const;
    /// The action of a command, or null.
    [[nodiscard]] QAction *find(CommandId id) const { return m_actions.value(id); }
    /// Calls `carryOut` when the action is triggered, for the lifetime of these actions.
    void onTriggered(CommandId id, const std::function<void()> &carryOut);
    /// Enables the action, or disables it and adds what it needs to its tool tip.
    void setEnabled(CommandId id, bool isEnabled);
    /// Why the key does nothing if it is the key of a disabled action; otherwise empty.
    [[nodiscard]] QString refusalOf(const QKeyEvent &key) const;

protected:
    CommandActions(const QList<CommandId> &ids, QObject *parent);

private:
    QHash<CommandId, QAction *> m_actions;
};

/// Adds the command to a context menu, such as a line's. The menu shows the command's key but doesn't handle it.
QAction *addCommand(QMenu &menu, CommandId id, const QString &title, const std::function<void()> &carryOut);
/// "Text (Ctrl+G)", with the command's first key if it has one.
[[nodiscard]] QString tipWithKey(const QString &text, CommandId id);
/// The command's tool tip with its key.
[[nodiscard]] QString tipOf(CommandId id);
/// The tool tip of a disabled command: also says what the command needs.
[[nodiscard]] QString tipWithRequirement(const QString &tip, CommandId id);
/// Whether the key is one of the command's.
[[nodiscard]] bool isKeyOf(const QKeyEvent &event, CommandId id);

} // namespace orlenta::shell
