#pragma once

#include "shell/editor/row/LineRowContent.h"

class QPainter;
class QWidget;

namespace orlenta::shell {

struct RowPlaces;

/// What a row looks like beside its content.
struct RowLook {
    RowDensity density = RowDensity::Comfortable;
    bool isHovered = false;
    bool isDropTarget = false;
    /// Keys act on this row.
    bool hasKeyboard = false;
};

/// Paints the background of a row: the card or table line, the stripe in the cast voice's colour, and the selection.
/// Neighbours in a selection share one outline.
namespace rowcard {

/// The colour behind the row's parts.
[[nodiscard]] QColor background(const RowLook &look, const LineRowContent &content, const QWidget &row);
void paint(QPainter &painter, const RowLook &look, const LineRowContent &content, const RowPlaces &places,
           const QWidget &row);
/// Paints a compact row's text, cut to one line, with small marks for notes and a spoken direction.
void paintText(QPainter &painter, const LineRowContent &content, const RowPlaces &places, const QWidget &row);

} // namespace rowcard
} // namespace orlenta::shell
