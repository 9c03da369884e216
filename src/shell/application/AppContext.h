#pragma once

#include "controller/SharedServices.h"

namespace orlenta::speech {
class LocalVoices;
}

namespace orlenta::shell {

class AppCommands;

/// What every window of the process shares. All of it outlives the windows.
struct AppContext {
    controller::SharedServices services;
    speech::LocalVoices &localVoices;
    AppCommands &commands;
};

} // namespace orlenta::shell
