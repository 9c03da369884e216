#pragma once

#include "shell/menus/CommandActions.h"

namespace orlenta::shell {

class AppCommands;

/// The menu commands that need no project: each window has a set of its own, all of which ask the application. The list
/// of keys is opened by whoever has the menu bar whose keys it shows.
class AppActions final : public CommandActions {
    Q_OBJECT
public:
    explicit AppActions(AppCommands &commands, QObject *parent = nullptr);
};

} // namespace orlenta::shell
