#pragma once

#include <QtCore/QString>

#include "base/files/FileError.h"
#include "base/Result.h"

namespace orlenta::controller {

/// Copies a file so that `destination` holds either all of it, on disk, or what it held before: through a temporary
/// file beside it, which a failure removes. Copying a file onto itself leaves it as it is. Blocking; any thread.
base::Result<void, base::FileError> copyFile(const QString &source, const QString &destination);

} // namespace orlenta::controller
