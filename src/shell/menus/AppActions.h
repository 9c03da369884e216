#pragma once

#include "shell/menus/CommandActions.h"

namespace orlenta::shell {

class AppCommands;

/// The application-wide menu commands. Each window has its own set. The owner of the menu bar opens the list of
/// shortcuts.
class AppActions final : public CommandActions {
    Q_OBJECT
public:
    explicit AppActions(AppCommands &commands, QObject *parent = nullptr);
};

} // namespace orlenta::shell
