#pragma once

namespace orlenta::shell {

/// The editing commands of whatever text has the keyboard, so that menus and text fields share their keys. Main thread.
class TextCommands final {
public:
    enum class Command { Cut, Copy, Paste, SelectAll };

    TextCommands() = delete;

    /// Whether a text had the keyboard and took the command.
    static bool send(Command command);
    [[nodiscard]] static bool canUndo();
    [[nodiscard]] static bool canRedo();
    /// Whether a text had the keyboard and something of its own to undo or redo.
    static bool undo();
    static bool redo();
};

} // namespace orlenta::shell
