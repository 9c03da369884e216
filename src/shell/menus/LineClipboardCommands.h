#pragma once

namespace orlenta::controller {
class ProjectController;
}

namespace orlenta::shell {

/// Cut, copy and paste of whole lines with the system clipboard. Each returns false if there was nothing to do. Main
/// thread.
class LineClipboardCommands final {
public:
    LineClipboardCommands() = delete;

    static bool cut(const controller::ProjectController &controller);
    static bool copy(const controller::ProjectController &controller);
    static bool paste(const controller::ProjectController &controller);
};

} // namespace orlenta::shell
