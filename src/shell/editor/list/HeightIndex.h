#pragma once

#include <vector>

#include <QtCore/QtGlobal>

namespace orlenta::shell {

/// The heights of a list's rows in pixels, with their running sum, as a Fenwick tree. Finding a row's offset, finding
/// the row at an offset, and changing a height take logarithmic time.
class HeightIndex final {
public:
    void assign(std::vector<int> heights);

    [[nodiscard]] qsizetype count() const { return static_cast<qsizetype>(m_heights.size()); }
    [[nodiscard]] int height(qsizetype row) const { return m_heights[static_cast<size_t>(row)]; }
    [[nodiscard]] qint64 total() const { return offsetOf(count()); }
    /// The sum of the heights before `row`, which is from 0 to count().
    [[nodiscard]] qint64 offsetOf(qsizetype row) const;
    /// The row at this offset. Clamped to the first and last rows; -1 without rows.
    [[nodiscard]] qsizetype rowAt(qint64 offset) const;
    /// `height` must be positive.
    void setHeight(qsizetype row, int height);

private:
    std::vector<int> m_heights;
    std::vector<qint64> m_tree;
};

} // namespace orlenta::shell
