#include "shell/editor/row/BusyIndicator.h"

#include <algorithm>

#include <QtGui/QPainter>

#include "shell/theme/Theme.h"

namespace orlenta::shell {

BusyIndicator::BusyIndicator(QWidget *parent) : QWidget(parent) {
    m_turn.setStartValue(0.0);
    m_turn.setEndValue(360.0);
    m_turn.setDuration(900);
    m_turn.setLoopCount(-1);
    connect(&m_turn, &QVariantAnimation::valueChanged, this, [this] { update(); });
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(QStringLiteral("Generating"));
}

QSize BusyIndicator::sizeHint() const {
    const int side = Theme::iconSize(this);
    return {side, side};
}

void BusyIndicator::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    const qreal line = std::max(1.5, width() / 9.0);
    const QRectF circle = QRectF(rect()).adjusted(line, line, -line, -line);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.border, line));
    painter.drawEllipse(circle);
    painter.setPen(QPen(colors.accent, line, Qt::SolidLine, Qt::RoundCap));
    // Angles are in sixteenths of a degree, anticlockwise.
    painter.drawArc(circle, static_cast<int>((90.0 - m_turn.currentValue().toDouble()) * 16.0), -100 * 16);
}

void BusyIndicator::showEvent(QShowEvent *event) {
    m_turn.start();
    QWidget::showEvent(event);
}

void BusyIndicator::hideEvent(QHideEvent *event) {
    m_turn.stop();
    QWidget::hideEvent(event);
}

} // namespace orlenta::shell
