#pragma once

#include "controller/SharedServices.h"

namespace orlenta::speech {
class LocalVoices;
}

namespace orlenta::shell {

class AppCommands;

/// The services that all windows share. They outlive the windows.
struct AppContext {
    controller::SharedServices services;
    speech::LocalVoices &localVoices;
    AppCommands &commands;
};

} // namespace orlenta::shell
