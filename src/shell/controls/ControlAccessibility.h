#pragma once

namespace orlenta::shell {

/// Installs the accessibility interfaces of standard controls that Qt describes differently: a combo box is named by
/// its label and tells its value, and of a bar's tabs only the current one has the focus, and only if the bar has. Call
/// it before windows are created; further calls do nothing. Main thread.
void installControlAccessibility();

} // namespace orlenta::shell
