#pragma once

class QMenu;

namespace orlenta::shell {

/// Gives each item of a menu its own mnemonic whenever the menu opens, because titles change ("Undo Typing"). While it
/// is closed, titles have none: buttons, tool tips and accessible names read them, too. Main thread.
class MenuMnemonics final {
public:
    MenuMnemonics() = delete;

    static void follow(QMenu &menu);
};

} // namespace orlenta::shell
