#pragma once

#include <QtWidgets/QStyleOption>

class QPainter;
class QWidget;

/// The painting functions of OrlentaStyle, one per kind of surface.
namespace orlenta::shell::painting {

/// Draws the keyboard focus ring inside `rect`.
void drawFocusRing(QPainter *painter, const QRect &rect, qreal radius, const QPalette &palette);

void drawPushButtonPanel(QPainter *painter, const QStyleOption &option, const QWidget *widget);
void drawToolButtonPanel(QPainter *painter, const QStyleOption &option, const QWidget *widget);
void drawFieldPanel(QPainter *painter, const QStyleOption &option);
void drawCheckIndicator(QPainter *painter, const QStyleOption &option);
void drawRadioIndicator(QPainter *painter, const QStyleOption &option);
void drawScrollBar(QPainter *painter, const QStyleOptionSlider &option, const QRect &thumb);
void drawSlider(QPainter *painter, const QStyleOptionSlider &option, const QRect &groove, const QRect &handle);
void drawComboBox(QPainter *painter, const QStyleOptionComboBox &option, const QRect &arrow);
void drawTab(QPainter *painter, const QStyleOptionTab &option);
void drawPopupPanel(QPainter *painter, const QStyleOption &option);
/// The bar's background and the line below it.
void drawMenuBarArea(QPainter *painter, const QStyleOption &option, const QWidget *bar);
void drawMenuTitle(QPainter *painter, const QStyleOptionMenuItem &option, const QWidget *bar);

} // namespace orlenta::shell::painting
