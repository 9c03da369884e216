#pragma once

#include <QtCore/QtGlobal>

namespace orlenta::controller {

/// A caret or selection inside a line's text, in UTF-16 code units.
struct TextRange {
    qsizetype location = 0;
    qsizetype length = 0;

    friend bool operator==(const TextRange &, const TextRange &) = default;
};

} // namespace orlenta::controller
