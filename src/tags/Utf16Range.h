#pragma once

#include <QtCore/QtGlobal>

namespace orlenta::tags {

/// A text range in UTF-16 code units, the unit of QString and text views.
struct Utf16Range {
    qsizetype location = 0;
    qsizetype length = 0;

    /// One past the last unit.
    [[nodiscard]] qsizetype end() const { return location + length; }

    friend bool operator==(const Utf16Range &, const Utf16Range &) = default;
};

} // namespace orlenta::tags
