#pragma once

namespace orlenta::shell {

/// Installs the accessibility interfaces: the script list is a list, its visible rows are list items with their
/// selection and focus, a waveform's playhead is a settable value in percent, and notices are notifications. Further
/// calls do nothing. Main thread.
void installScriptAccessibility();

} // namespace orlenta::shell
