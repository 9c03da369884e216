#include "shell/theme/StylePainting.h"

#include <algorithm>

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>

#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell::painting {
namespace {

qreal radiusOf(const QStyleOption &option) {
    return Theme::unit(option.fontMetrics) * 1.5;
}

// Puts the one-pixel outline on pixel centres, to keep it sharp.
void drawBox(QPainter *painter, const QRect &rect, qreal radius, const QColor &fill, const QColor &line) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(line.isValid() ? QPen(line, 1.0) : QPen(Qt::NoPen));
    painter->setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    painter->restore();
}

bool has(const QStyleOption &option, QStyle::StateFlag flag) {
    return option.state.testFlag(flag);
}

} // namespace

void drawFocusRing(QPainter *painter, const QRect &rect, qreal radius, const QPalette &palette) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(ThemeColors::of(palette).accent, 2.0));
    painter->drawRoundedRect(QRectF(rect).adjusted(1.0, 1.0, -1.0, -1.0), radius, radius);
    painter->restore();
}

void drawPushButtonPanel(QPainter *painter, const QStyleOption &option, const QWidget *widget) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool hovered = enabled && has(option, QStyle::State_MouseOver);
    const bool pressed = has(option, QStyle::State_Sunken) || has(option, QStyle::State_On);
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(&option);
    const bool isDefault = button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
    const ButtonRole role = isDefault ? ButtonRole::Primary : Theme::role(widget);
    const qreal radius = radiusOf(option);
    if (role == ButtonRole::Primary && enabled) {
        const QColor fill = pressed || hovered ? colors.accentHover : colors.accent;
        drawBox(painter, option.rect, radius, fill, fill);
        if (has(option, QStyle::State_HasFocus))
            drawBox(painter, option.rect.adjusted(2, 2, -2, -2), radius - 2.0, QColor(), colors.onAccent);
        return;
    }
    if (role == ButtonRole::Quiet) {
        if (pressed || hovered)
            drawBox(painter, option.rect, radius, colors.surfaceHover, QColor());
    } else {
        const QColor fill = !enabled ? colors.window : pressed || hovered ? colors.surfaceHover : colors.surface;
        drawBox(painter, option.rect, radius, fill, enabled ? colors.borderStrong : colors.border);
    }
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, radius, option.palette);
}

void drawToolButtonPanel(QPainter *painter, const QStyleOption &option, const QWidget *widget) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool on = has(option, QStyle::State_On);
    const bool raised = has(option, QStyle::State_Sunken) || (enabled && has(option, QStyle::State_MouseOver));
    if (Theme::role(widget) == ButtonRole::Primary && enabled) {
        const QColor fill = raised ? colors.accentHover : colors.accent;
        drawBox(painter, option.rect, radiusOf(option), fill, fill);
    } else if (on || raised) {
        drawBox(painter, option.rect, radiusOf(option), on && !raised ? colors.accentSoft : colors.surfaceHover,
                QColor());
    }
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, radiusOf(option), option.palette);
}

void drawFieldPanel(QPainter *painter, const QStyleOption &option) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    drawBox(painter, option.rect, radiusOf(option), enabled ? colors.field : colors.window,
            enabled ? colors.borderControl : colors.border);
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, radiusOf(option), option.palette);
}

void drawCheckIndicator(QPainter *painter, const QStyleOption &option) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool filled = has(option, QStyle::State_On) || has(option, QStyle::State_NoChange);
    const QColor fill = filled ? (enabled ? colors.accent : colors.textDisabled) : colors.field;
    const QRect box = option.rect.adjusted(1, 1, -1, -1);
    drawBox(painter, box, box.height() / 4.0, fill, filled ? fill : colors.borderControl);
    if (has(option, QStyle::State_On))
        Icon::named(QStringLiteral("checkmark"), Icon::Tint::OnAccent).paint(painter, box.adjusted(1, 1, -1, -1));
    else if (filled)
        painter->fillRect(QRect(box.left() + box.width() / 4, box.center().y(), box.width() / 2, 2), colors.onAccent);
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, box.height() / 4.0, option.palette);
}

void drawRadioIndicator(QPainter *painter, const QStyleOption &option) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool on = has(option, QStyle::State_On);
    const QColor fill = on ? (enabled ? colors.accent : colors.textDisabled) : colors.field;
    const QRect box = option.rect.adjusted(1, 1, -1, -1);
    drawBox(painter, box, box.height() / 2.0, fill, on ? fill : colors.borderControl);
    if (on) {
        const int inset = box.height() / 3;
        drawBox(painter, box.adjusted(inset, inset, -inset, -inset), box.height() / 2.0, colors.onAccent, QColor());
    }
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, box.height() / 2.0, option.palette);
}

void drawScrollBar(QPainter *painter, const QStyleOptionSlider &option, const QRect &thumb) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    if (option.minimum >= option.maximum)
        return;
    const bool active = has(option, QStyle::State_MouseOver) || has(option, QStyle::State_Sunken);
    const int across = option.orientation == Qt::Vertical ? thumb.width() : thumb.height();
    const int inset = active ? across / 5 : across * 3 / 10;
    const QRect bar = option.orientation == Qt::Vertical ? thumb.adjusted(inset, 2, -inset, -2)
                                                         : thumb.adjusted(2, inset, -2, -inset);
    const QColor fill = active ? colors.textMuted : colors.borderControl;
    drawBox(painter, bar, std::min(bar.width(), bar.height()) / 2.0, fill, QColor());
}

void drawSlider(QPainter *painter, const QStyleOptionSlider &option, const QRect &groove, const QRect &handle) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool horizontal = option.orientation == Qt::Horizontal;
    const int thickness = std::max(3, Theme::unit(option.fontMetrics));
    QRect track = groove;
    if (horizontal)
        track = QRect(groove.left(), groove.center().y() - thickness / 2, groove.width(), thickness);
    else
        track = QRect(groove.center().x() - thickness / 2, groove.top(), thickness, groove.height());
    drawBox(painter, track, thickness / 2.0, colors.border, QColor());
    QRect filled = track;
    if (horizontal && option.direction == Qt::LeftToRight)
        filled.setRight(handle.center().x());
    else if (horizontal)
        filled.setLeft(handle.center().x());
    else
        filled.setTop(handle.center().y());
    const QColor accent = enabled ? colors.accent : colors.borderStrong;
    drawBox(painter, filled, thickness / 2.0, accent, QColor());
    const int side = std::min(handle.width(), handle.height()) - 2;
    QRect knob(0, 0, side, side);
    knob.moveCenter(handle.center());
    drawBox(painter, knob, side / 2.0, colors.surface, accent);
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, knob.adjusted(-1, -1, 1, 1), side / 2.0 + 1.0, option.palette);
}

void drawComboBox(QPainter *painter, const QStyleOptionComboBox &option, const QRect &arrow) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool enabled = has(option, QStyle::State_Enabled);
    const bool hovered = enabled && has(option, QStyle::State_MouseOver) && !option.editable;
    drawBox(painter, option.rect, radiusOf(option),
            !enabled  ? colors.window
            : hovered ? colors.surfaceHover
                      : colors.field,
            enabled ? colors.borderControl : colors.border);
    const int side = std::min(option.fontMetrics.height(), arrow.width());
    QRect mark(0, 0, side, side);
    mark.moveCenter(arrow.center());
    Icon::named(QStringLiteral("chevron-down"), Icon::Tint::Muted)
        .paint(painter, mark, Qt::AlignCenter, enabled ? QIcon::Normal : QIcon::Disabled);
    if (has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, option.rect, radiusOf(option), option.palette);
}

void drawTab(QPainter *painter, const QStyleOptionTab &option) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool selected = has(option, QStyle::State_Selected);
    const int gap = Theme::unit(option.fontMetrics) / 2;
    const QRect tab = option.rect.adjusted(gap / 2, gap, -gap / 2, -gap);
    if (selected)
        drawBox(painter, tab, radiusOf(option), colors.surface, colors.border);
    else if (has(option, QStyle::State_MouseOver))
        drawBox(painter, tab, radiusOf(option), colors.surfaceHover, QColor());
    if (selected && has(option, QStyle::State_HasFocus))
        drawFocusRing(painter, tab, radiusOf(option), option.palette);
}

void drawPopupPanel(QPainter *painter, const QStyleOption &option) {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    painter->save();
    painter->setPen(colors.borderStrong);
    painter->setBrush(colors.surface);
    painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    painter->restore();
}

void drawMenuBarArea(QPainter *painter, const QStyleOption &option, const QWidget *bar) {
    painter->fillRect(option.rect, option.palette.window());
    // At the foot of the bar, not of the area: titles need not be as high as the bar.
    const int foot = bar != nullptr ? bar->rect().bottom() : option.rect.bottom();
    painter->fillRect(option.rect.left(), foot, option.rect.width(), 1, ThemeColors::of(option.palette).border);
}

void drawMenuTitle(QPainter *painter, const QStyleOptionMenuItem &option, const QWidget *bar) {
    drawMenuBarArea(painter, option, bar);
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const bool isOpen = has(option, QStyle::State_Selected) && has(option, QStyle::State_Sunken);
    if (isOpen || has(option, QStyle::State_Selected))
        drawBox(painter, option.rect.adjusted(1, 1, -1, -2), radiusOf(option) / 2.0,
                isOpen ? colors.accentSoft : colors.surfaceHover, QColor());
    const auto *style = bar != nullptr ? bar->style() : QApplication::style();
    const bool underlines = style->styleHint(QStyle::SH_UnderlineShortcut, &option, bar) != 0;
    style->drawItemText(painter, option.rect,
                        Qt::AlignCenter | (underlines ? Qt::TextShowMnemonic : Qt::TextHideMnemonic) |
                            Qt::TextSingleLine,
                        option.palette, has(option, QStyle::State_Enabled), option.text, QPalette::WindowText);
}

} // namespace orlenta::shell::painting
