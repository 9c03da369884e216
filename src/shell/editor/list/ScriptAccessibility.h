#pragma once

namespace orlenta::shell {

/// From then on assistive technology sees the script list as a list, its rows in view as that list's items with their
/// selection and focus, a waveform's playhead as a share in percent that it can move, and notices as notifications.
/// Further calls change nothing. Main thread.
void installScriptAccessibility();

} // namespace orlenta::shell
