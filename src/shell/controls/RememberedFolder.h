#pragma once

#include "base/UserDefaults.h"

class QFileDialog;

namespace orlenta::shell {

/// Starts the dialog in the folder where the user last chose something in a dialog of this kind, and remembers the
/// next choice. The defaults outlive the dialog.
void rememberFolder(QFileDialog &dialog, base::UserDefaults &defaults, base::DialogFolder kind);

} // namespace orlenta::shell
