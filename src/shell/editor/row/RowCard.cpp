#include "shell/editor/row/RowCard.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QWidget>

#include "shell/editor/row/LineHeader.h"
#include "shell/editor/row/RowPlaces.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell::rowcard {
namespace {

/// Long texts are cut before they are measured: more doesn't fit into a line.
constexpr qsizetype longestShown = 400;

/// Puts the one-pixel outline on pixel centres, to keep it sharp.
QPainterPath outlineOf(const QRectF &card, qreal radius) {
    QPainterPath path;
    path.addRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    return path;
}

/// The card, continued beyond the row's edges where it joins a neighbour.
QRectF joined(const QRect &card, const LineRowContent &content, const QWidget &row, qreal radius) {
    QRectF rect(card);
    if (content.joinsAbove)
        rect.setTop(-radius - 1.0);
    if (content.joinsBelow)
        rect.setBottom(row.height() + radius + 1.0);
    return rect;
}

} // namespace

QColor background(const RowLook &look, const LineRowContent &content, const QWidget &row) {
    const ThemeColors &colors = ThemeColors::of(row.palette());
    if (content.isSelected || look.isDropTarget)
        return colors.surfaceSelected;
    return look.isHovered ? colors.surfaceHover : colors.surface;
}

void paint(QPainter &painter, const RowLook &look, const LineRowContent &content, const RowPlaces &places,
           const QWidget &row) {
    const ThemeColors &colors = ThemeColors::of(row.palette());
    const bool isCompact = look.density == RowDensity::Compact;
    const bool isMarked = content.isSelected || look.isDropTarget;
    const qreal radius = isCompact ? 0.0 : Theme::radius(&row) * 1.3;
    painter.setRenderHint(QPainter::Antialiasing);
    const QPainterPath own = outlineOf(places.card, radius);
    const QPainterPath outline =
        content.isSelected ? outlineOf(joined(places.card, content, row, radius), radius) : own;
    painter.fillPath(outline, background(look, content, row));
    if (content.header.stripe.isValid()) {
        painter.save();
        painter.setClipPath(outline);
        painter.fillRect(places.stripe, content.header.stripe);
        painter.restore();
    }
    if (isCompact && !isMarked) {
        painter.fillRect(QRect(places.card.left(), row.height() - 1, places.card.width(), 1), colors.border);
    } else {
        QPen line(isMarked ? colors.accent : colors.border, look.isDropTarget ? 2.0 : 1.0);
        if (look.isDropTarget)
            line.setStyle(Qt::DashLine);
        painter.setPen(line);
        painter.drawPath(outline);
    }
    if (!content.isCurrent)
        return;
    const int unit = Theme::unit(&row);
    painter.fillRect(QRect(places.card.left() - unit * 2, places.card.top(), unit, places.card.height()),
                     colors.accent);
    if (look.hasKeyboard) {
        painter.setPen(QPen(colors.accent, 2.0));
        painter.drawPath(outlineOf(QRectF(places.card).adjusted(0.5, 0.5, -0.5, -0.5), radius));
    }
}

void paintText(QPainter &painter, const LineRowContent &content, const RowPlaces &places, const QWidget &row) {
    const ThemeColors &colors = ThemeColors::of(row.palette());
    const int unit = Theme::unit(&row);
    painter.setFont(Theme::scriptFont());
    painter.setPen(content.text.text.isEmpty() ? colors.placeholder : colors.text);
    const QString words = content.text.text.left(longestShown).simplified();
    painter.drawText(places.text, Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(words, Qt::ElideRight, places.text.width()));
    if (content.status == RowStatus::NoVoice && !places.takes.isEmpty()) {
        painter.setFont(row.font());
        painter.setPen(colors.textMuted);
        painter.drawText(
            places.takes.adjusted(unit, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
            painter.fontMetrics().elidedText(LineHeader::voiceHint(), Qt::ElideRight, places.takes.width() - unit));
    }
    QRect mark(places.text.right() + unit / 2, unit, unit, unit);
    if (!content.notes.isEmpty())
        painter.fillRect(mark, colors.accent);
    if (content.direction)
        painter.fillRect(mark.translated(0, unit * 2), colors.textMuted);
}

} // namespace orlenta::shell::rowcard
