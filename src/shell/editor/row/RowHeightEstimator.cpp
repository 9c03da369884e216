#include "shell/editor/row/RowHeightEstimator.h"

#include <algorithm>
#include <cmath>

#include <QtWidgets/QWidget>

#include "shell/editor/row/RowPlaces.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

RowHeightEstimator::RowHeightEstimator(const QWidget &list, int width, RowDensity density) : m_density(density) {
    const int unit = Theme::unit(&list);
    const QFontMetrics text(Theme::scriptFont());
    const int room = width - unit * 12 - std::max(4, unit);
    const int textWidth = std::clamp(room, unit * 20, unit * RowPlaces::longestText);
    const QString sample = QStringLiteral("the quick brown fox jumps over the lazy dog, or so they say");
    m_charactersPerLine = textWidth / (text.horizontalAdvance(sample) / static_cast<double>(sample.size()));
    m_lineHeight = text.lineSpacing() * 1.2;
    m_compact = unit * RowPlaces::compactHeight;
    m_isWide = width >= unit * RowPlaces::wideList;
    m_bare = unit * 21 / 2;
    m_audio = m_isWide ? 0 : unit * 13 / 2;
    m_direction = list.fontMetrics().height() + unit * 6;
    m_notes = list.fontMetrics().height() + 8;
}

int RowHeightEstimator::height(const LineOutline &outline) const {
    if (m_density == RowDensity::Compact)
        return m_compact;
    const double lines = std::max(1.0, std::ceil(static_cast<double>(outline.textLength) / m_charactersPerLine));
    return m_bare + static_cast<int>(lines * m_lineHeight) + (outline.hasAudio ? m_audio : 0) +
           (outline.hasDirection ? m_direction : 0) + (outline.hasNotes ? m_notes : 0);
}

} // namespace orlenta::shell
