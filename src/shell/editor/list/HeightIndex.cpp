#include "shell/editor/list/HeightIndex.h"

#include <algorithm>
#include <bit>

namespace orlenta::shell {
namespace {

size_t lowestBit(size_t value) {
    return value & (~value + 1);
}

} // namespace

void HeightIndex::assign(std::vector<int> heights) {
    m_heights = std::move(heights);
    // Node i, counted from 1, holds the sum of the lowestBit(i) rows that end with row i - 1.
    m_tree.assign(m_heights.size() + 1, 0);
    for (size_t node = 1; node < m_tree.size(); ++node) {
        m_tree[node] += m_heights[node - 1];
        const size_t parent = node + lowestBit(node);
        if (parent < m_tree.size())
            m_tree[parent] += m_tree[node];
    }
}

qint64 HeightIndex::offsetOf(qsizetype row) const {
    qint64 sum = 0;
    for (auto node = static_cast<size_t>(row); node > 0; node -= lowestBit(node))
        sum += m_tree[node];
    return sum;
}

qsizetype HeightIndex::rowAt(qint64 offset) const {
    if (m_heights.empty())
        return -1;
    size_t node = 0;
    qint64 left = std::max<qint64>(offset, 0);
    for (size_t step = std::bit_floor(m_heights.size()); step > 0; step /= 2) {
        if (node + step < m_tree.size() && m_tree[node + step] <= left) {
            node += step;
            left -= m_tree[node];
        }
    }
    return static_cast<qsizetype>(std::min(node, m_heights.size() - 1));
}

void HeightIndex::setHeight(qsizetype row, int height) {
    int &stored = m_heights[static_cast<size_t>(row)];
    const int change = height - stored;
    stored = height;
    for (auto node = static_cast<size_t>(row) + 1; change != 0 && node < m_tree.size(); node += lowestBit(node))
        m_tree[node] += change;
}

} // namespace orlenta::shell
