#pragma once

#include <QtCore/QString>

namespace orlenta::model {

/// Reduces a stored name to its last path component, so that a project file can't point outside its folders. Returns an
/// empty string if nothing is left, or only "." or "..".
[[nodiscard]] QString guardedFileName(const QString &stored);

} // namespace orlenta::model
