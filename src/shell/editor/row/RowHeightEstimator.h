#pragma once

#include <QtCore/QtGlobal>

#include "shell/editor/row/LineRowContent.h"

class QWidget;

namespace orlenta::shell {

/// The properties that determine a row's approximate height.
struct LineOutline {
    qsizetype textLength = 0;
    bool hasAudio = false;
    bool hasDirection = false;
    bool hasNotes = false;
};

/// Estimates the height of rows of a given width, in pixels, from the length of their text without laying it out.
class RowHeightEstimator final {
public:
    RowHeightEstimator(const QWidget &list, int width, RowDensity density);

    [[nodiscard]] int height(const LineOutline &outline) const;

private:
    RowDensity m_density;
    bool m_isWide = false;
    double m_charactersPerLine = 1.0;
    double m_lineHeight = 0.0;
    int m_bare = 0;
    int m_compact = 0;
    int m_audio = 0;
    int m_direction = 0;
    int m_notes = 0;
};

} // namespace orlenta::shell
