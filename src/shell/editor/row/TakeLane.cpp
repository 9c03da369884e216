#include "shell/editor/row/TakeLane.h"

#include <algorithm>

#include <QtGui/QPainter>

#include "shell/editor/row/WaveformBarsView.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

TakeLane::TakeLane(QWidget *parent) : QWidget(parent), m_waveform(new WaveformBarsView(this)) {}

void TakeLane::setTimes(double seconds, double laneSeconds) {
    if (m_seconds == seconds && m_laneSeconds == laneSeconds)
        return;
    m_seconds = seconds;
    m_laneSeconds = laneSeconds;
    layOut();
    update();
}

QSize TakeLane::sizeHint() const {
    return m_waveform->sizeHint();
}

QSize TakeLane::minimumSizeHint() const {
    return {Theme::unit(this) * 8, sizeHint().height()};
}

bool TakeLane::isTooLong() const {
    return m_laneSeconds > 0.0 && m_seconds > m_laneSeconds;
}

int TakeLane::zigzagWidth() const {
    return Theme::unit(this) * 2;
}

void TakeLane::layOut() {
    int room = width();
    if (isTooLong())
        room -= zigzagWidth();
    else if (m_laneSeconds > 0.0 && m_seconds > 0.0)
        room = std::max(Theme::unit(this) * 2, qRound(room * m_seconds / m_laneSeconds));
    m_waveform->setGeometry(0, 0, std::min(room, width()), height());
}

void TakeLane::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    layOut();
}

void TakeLane::paintEvent(QPaintEvent *) {
    const int left = m_waveform->geometry().right() + 1;
    if (left >= width())
        return;
    const ThemeColors &colors = ThemeColors::of(palette());
    const int unit = Theme::unit(this);
    QPainter painter(this);
    if (!isTooLong()) {
        painter.fillRect(QRect(left + unit, height() / 2, std::max(0, width() - left - unit), 1), colors.border);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colors.borderControl, 1.5));
    QPolygonF zigzag;
    const qreal middle = left + zigzagWidth() / 2.0;
    for (int step = 0; step <= 4; ++step)
        zigzag << QPointF(middle + (step % 2 == 0 ? -unit : unit) / 2.0, height() * (step + 1) / 6.0);
    painter.drawPolyline(zigzag);
}

} // namespace orlenta::shell
