#include "shell/editor/row/WaveformBarsView.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include <QtGui/QAccessible>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include "shell/editor/list/ScriptAccessibility.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

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

/// Where the key leads from that place. Sound runs from left to right in every script, whichever way the interface
/// does.
std::optional<double> placeForKey(int key, double from) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Down:
        return from - WaveformBarsView::keyStep;
    case Qt::Key_Right:
    case Qt::Key_Up:
        return from + WaveformBarsView::keyStep;
    case Qt::Key_PageDown:
        return from - WaveformBarsView::pageStep;
    case Qt::Key_PageUp:
        return from + WaveformBarsView::pageStep;
    case Qt::Key_Home:
        return 0.0;
    case Qt::Key_End:
        return 1.0;
    default:
        return {};
    }
}

} // namespace

WaveformBarsView::WaveformBarsView(QWidget *parent) : QWidget(parent) {
    installScriptAccessibility();
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

void WaveformBarsView::setProgress(double progress, RowPlayback playback) {
    const double place = std::clamp(progress, 0.0, 1.0);
    if (std::exchange(m_progress, place) != place)
        update();
    if (playback != RowPlayback::Playing)
        tellProgress();
}

void WaveformBarsView::tellProgress() {
    if (std::exchange(m_toldPercent, percent()) == percent())
        return;
    QAccessibleValueChangeEvent event(this, percent());
    QAccessible::updateAccessibility(&event);
    Q_EMIT placeTold(percent());
}

void WaveformBarsView::setShowsProgress(bool showsProgress) {
    if (m_showsProgress == showsProgress)
        return;
    m_showsProgress = showsProgress;
    update();
}

int WaveformBarsView::percent() const {
    return qRound(m_progress * 100.0);
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
    const double played = m_progress;
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
    seek(event->position().x() / std::max(1, width()));
}

void WaveformBarsView::keyPressEvent(QKeyEvent *event) {
    if (isKeyOf(*event, CommandId::PressControl)) {
        if (!event->isAutoRepeat())
            Q_EMIT playRequested();
        return;
    }
    const std::optional<double> wanted = placeForKey(event->key(), m_progress);
    if (!wanted)
        return event->ignore();
    const double place = std::clamp(*wanted, 0.0, 1.0);
    if (std::exchange(m_progress, place) == place)
        return;
    update();
    seek(place);
}

void WaveformBarsView::seek(double fraction) {
    Q_EMIT seekRequested(std::clamp(fraction, 0.0, 1.0));
    tellProgress();
}

} // namespace orlenta::shell
