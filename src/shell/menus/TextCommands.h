#pragma once

#include <functional>

#include <QtCore/QList>
#include <QtCore/QObject>

namespace orlenta::shell {

/// Sends editing commands to the text field with the focus, so that menus and text fields share keys. Main thread.
class TextCommands final {
public:
    enum class Command { Cut, Copy, Paste, SelectAll };

    TextCommands() = delete;

    /// Sends the command. False if no text field has the focus, or if it can't paste what is on the clipboard.
    static bool send(Command command);
    /// Whether the text field can use what is on the clipboard.
    [[nodiscard]] static bool canPaste(const QObject *field);
    [[nodiscard]] static bool canUndo();
    [[nodiscard]] static bool canRedo();
    /// Calls `changed` when what the text field with the focus can undo or redo may have changed. The connections end
    /// with the receiver or the field.
    static QList<QMetaObject::Connection> watchUndo(QObject *receiver, const std::function<void()> &changed);
    /// False if no text field has the focus or it has nothing to undo or redo.
    static bool undo();
    static bool redo();
};

} // namespace orlenta::shell
