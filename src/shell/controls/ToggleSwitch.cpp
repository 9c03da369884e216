#include "shell/controls/ToggleSwitch.h"

#include <QtGui/QPainter>

namespace orlenta::shell {
namespace {

constexpr int switchTextGap = 9;

} // namespace

ToggleSwitch::ToggleSwitch(const QString &text, QWidget *parent) : QCheckBox(text, parent) {
    setCursor(Qt::PointingHandCursor);
}

QSize ToggleSwitch::trackSize() const {
    const int height = fontMetrics().height();
    return {height * 7 / 4, height};
}

QSize ToggleSwitch::sizeHint() const {
    const QSize track = trackSize();
    return {track.width() + switchTextGap + fontMetrics().horizontalAdvance(text()) + 4, track.height() + 8};
}

QSize ToggleSwitch::minimumSizeHint() const {
    return sizeHint();
}

bool ToggleSwitch::hitButton(const QPoint &position) const {
    return rect().contains(position);
}

void ToggleSwitch::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QSize size = trackSize();
    const QRectF track(2, (height() - size.height()) / 2.0, size.width(), size.height());
    const double radius = track.height() / 2;
    QColor fill = palette().color(isChecked() ? QPalette::Highlight : QPalette::Mid);
    if (!isEnabled())
        fill.setAlphaF(0.45F);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(track, radius, radius);
    const double knob = track.height() - 4;
    const double x = isChecked() ? track.right() - knob - 2 : track.left() + 2;
    painter.setBrush(QColor(Qt::white));
    painter.drawEllipse(QRectF(x, track.top() + 2, knob, knob));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(palette().color(QPalette::WindowText), 1));
        painter.drawRoundedRect(track.adjusted(-1.5, -1.5, 1.5, 1.5), radius + 1.5, radius + 1.5);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    const int left = 2 + size.width() + switchTextGap;
    painter.drawText(QRect(left, 0, width() - left, height()), Qt::AlignVCenter | Qt::AlignLeft, text());
}

} // namespace orlenta::shell
