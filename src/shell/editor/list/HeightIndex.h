#pragma once

#include <vector>

#include <QtCore/QtGlobal>

namespace orlenta::shell {

/// The heights of a list's rows, in pixels, with the running sum over them: a Fenwick tree. Finding a row's offset, the
/// row at an offset, and changing one height each take a number of steps that grows with the logarithm of the row
/// count.
class HeightIndex final {
public:
    void assign(std::vector<int> heights);

    [[nodiscard]] qsizetype count() const { return static_cast<qsizetype>(m_heights.size()); }
    [[nodiscard]] int height(qsizetype row) const { return m_heights[static_cast<size_t>(row)]; }
    [[nodiscard]] qint64 total() const { return offsetOf(count()); }
    /// Sum of the heights before `row`, which is 0 to count().
    [[nodiscard]] qint64 offsetOf(qsizetype row) const;
    /// The row that covers this offset. Offsets before the first and after the last row give those; -1 without rows.
    [[nodiscard]] qsizetype rowAt(qint64 offset) const;
    /// `height` is above 0.
    void setHeight(qsizetype row, int height);

private:
    std::vector<int> m_heights;
    std::vector<qint64> m_tree;
};

} // namespace orlenta::shell
