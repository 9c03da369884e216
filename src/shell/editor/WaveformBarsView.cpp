#include "shell/editor/WaveformBarsView.h"

#include <algorithm>
#include <cmath>

#include <QtCore/QSignalBlocker>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include "shell/editor/ScriptAccessibility.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

constexpr int progressSteps = 10000;
constexpr qreal shortestBar = 2.0;
constexpr qreal cornerSize = 0.5;
// How calm bars look where contrast allows it: all of them without a playhead, and those it has not reached.
constexpr qreal calmestIdle = 0.72;
constexpr qreal calmestResting = 0.32;
constexpr double playedContrast = 4.5;
// A little more than 3 and 2.5, which rounding to the screen's colours takes off.
constexpr double idleContrast = 3.1;
constexpr double restingContrast = 2.6;

/// The least opacity from `least` on at which the colour keeps that contrast to the ground below it.
qreal opacityFor(const QColor &color, const QColor &ground, qreal least, double contrast) {
    constexpr qreal step = 0.02;
    for (qreal opacity = least; opacity < 1.0; opacity += step) {
        const auto mixed = [&](float over, float below) {
            return below + (over - below) * static_cast<float>(opacity);
        };
        const QColor seen = QColor::fromRgbF(mixed(color.redF(), ground.redF()), mixed(color.greenF(), ground.greenF()),
                                             mixed(color.blueF(), ground.blueF()));
        if (contrastRatio(seen, ground) >= contrast)
            return opacity;
    }
    return 1.0;
}

} // namespace

WaveformBarsView::WaveformBarsView(QWidget *parent) : QAbstractSlider(parent) {
    installScriptAccessibility();
    setRange(0, progressSteps);
    setSingleStep(progressSteps / 50);
    setPageStep(progressSteps / 10);
    setOrientation(Qt::Horizontal);
    // Sound runs from left to right in every script; otherwise the arrow keys would turn round with the interface.
    setLayoutDirection(Qt::LeftToRight);
    setCursor(Qt::PointingHandCursor);
}

void WaveformBarsView::setSamples(const QList<float> &samples) {
    if (m_samples == samples)
        return;
    m_samples = samples;
    update();
}

void WaveformBarsView::setFallbackHeights(const QList<qreal> &heights) {
    m_fallbackHeights = heights;
    update();
}

void WaveformBarsView::setColor(const QColor &color, const QColor &ground) {
    if (m_color == color && m_ground == ground)
        return;
    m_color = color;
    m_ground = ground;
    m_played = readableOn(ground, color, playedContrast);
    m_idleOpacity = opacityFor(m_played, ground, calmestIdle, idleContrast);
    m_restingOpacity = opacityFor(m_played, ground, calmestResting, restingContrast);
    update();
}

void WaveformBarsView::setMaxBarHeight(qreal height) {
    m_maxBarHeight = height;
    update();
}

void WaveformBarsView::setBars(qreal barWidth, qreal barSpacing) {
    m_barWidth = barWidth;
    m_barSpacing = barSpacing;
    update();
}

void WaveformBarsView::setProgress(double progress) {
    const QSignalBlocker blocker(this);
    setValue(qRound(std::clamp(progress, 0.0, 1.0) * progressSteps));
}

void WaveformBarsView::setShowsProgress(bool showsProgress) {
    if (m_showsProgress == showsProgress)
        return;
    m_showsProgress = showsProgress;
    update();
}

double WaveformBarsView::progress() const {
    return static_cast<double>(value()) / progressSteps;
}

int WaveformBarsView::barCount() const {
    return std::max(1, static_cast<int>(std::floor(width() / (m_barWidth + m_barSpacing))));
}

QSize WaveformBarsView::sizeHint() const {
    return {Theme::unit(this) * 40, static_cast<int>(std::ceil(m_maxBarHeight)) + 4};
}

qreal WaveformBarsView::barHeight(int bar, int bars) const {
    if (m_samples.isEmpty())
        return m_fallbackHeights.isEmpty() ? shortestBar : m_fallbackHeights.at(bar % m_fallbackHeights.size());
    const qsizetype sample = std::min(qsizetype(bar) * m_samples.size() / bars, m_samples.size() - 1);
    return std::max(shortestBar, m_maxBarHeight * static_cast<qreal>(m_samples.at(sample)));
}

void WaveformBarsView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_played);
    const int bars = barCount();
    const qreal pitch = m_barWidth + m_barSpacing;
    const qreal inset = std::max(0.0, (width() - (m_barWidth * bars + m_barSpacing * (bars - 1))) / 2.0);
    const qreal scale = std::max(1.0, devicePixelRatioF());
    const auto snapped = [scale](qreal position) { return std::floor(position * scale) / scale; };
    const double played = progress();
    for (int bar = 0; bar < bars; ++bar) {
        const qreal barTall = snapped(barHeight(bar, bars));
        const bool isResting = m_showsProgress && static_cast<double>(bar) / bars > played;
        painter.setOpacity(!m_showsProgress ? m_idleOpacity : isResting ? m_restingOpacity : 1.0);
        painter.drawRoundedRect(
            QRectF(snapped(inset + pitch * bar), snapped((height() - barTall) / 2.0), m_barWidth, barTall), cornerSize,
            cornerSize);
    }
    if (hasFocus()) {
        painter.setOpacity(1.0);
        painting::drawFocusRing(&painter, rect(), Theme::radius(this), palette());
    }
}

void WaveformBarsView::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    Q_EMIT seekRequested(std::clamp(event->position().x() / std::max(1, width()), 0.0, 1.0));
}

void WaveformBarsView::wheelEvent(QWheelEvent *event) {
    // It scrolls the list.
    event->ignore();
}

void WaveformBarsView::keyPressEvent(QKeyEvent *event) {
    const int before = value();
    {
        const QSignalBlocker blocker(this);
        QAbstractSlider::keyPressEvent(event);
    }
    if (value() == before)
        return;
    update();
    Q_EMIT seekRequested(progress());
}

} // namespace orlenta::shell
