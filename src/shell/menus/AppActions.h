#pragma once

#include "shell/menus/CommandActions.h"

namespace orlenta::shell {

class AppCommands;

/// The application-wide menu commands. Each window has its own set. The window whose menu bar it is opens the list of
/// shortcuts itself.
class AppActions final : public CommandActions {
    Q_OBJECT
public:
    explicit AppActions(AppCommands &commands, QObject *parent = nullptr);
};

} // namespace orlenta::shell
