#pragma once

#include "controller/SharedServices.h"

namespace orlenta::shell {

class AppCommands;
class LocalVoices;

/// What every window of the process shares. All of it outlives the windows.
struct AppContext {
    controller::SharedServices services;
    LocalVoices &localVoices;
    AppCommands &commands;
};

} // namespace orlenta::shell
