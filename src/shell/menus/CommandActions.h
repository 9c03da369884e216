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

/// Actions for some of the commands, each with the title, keys, icon and tool tip that the table of commands gives it.
class CommandActions : public QObject {
    Q_OBJECT
public:
    /// The action of that command; the set must hold it.
    [[nodiscard]] QAction *operator[](CommandId id) const;
    /// The same, or null.
    [[nodiscard]] QAction *find(CommandId id) const { return m_actions.value(id); }
    /// Carries the command out from now on, as long as these actions live.
    void onTriggered(CommandId id, const std::function<void()> &carryOut);

protected:
    CommandActions(const QList<CommandId> &ids, QObject *parent);

private:
    QHash<CommandId, QAction *> m_actions;
};

/// Adds the command to a menu of its own, such as a line's, with the key that does the same elsewhere: there it is
/// shown and not taken.
QAction *addCommand(QMenu &menu, CommandId id, const QString &title, const std::function<void()> &carryOut);
/// "Text (Ctrl+G)", with the command's first key; the text alone where it has none.
[[nodiscard]] QString tipWithKey(const QString &text, CommandId id);
/// The command's own tool tip, with its key.
[[nodiscard]] QString tipOf(CommandId id);
/// Whether the key is one of the command's.
[[nodiscard]] bool isKeyOf(const QKeyEvent &event, CommandId id);

} // namespace orlenta::shell
