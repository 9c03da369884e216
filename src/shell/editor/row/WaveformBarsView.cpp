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
constexpr qreal playheadWidth = 2.0;
// Minimum opacity of the bars: idle, and after the playhead. Raised where contrast demands it.
constexpr qreal faintestIdle = 0.72;
constexpr qreal faintestResting = 0.32;
constexpr double playedContrast = 4.5;
// Slightly more than 3 and 2.5, to allow for rounding to screen colours.
constexpr double idleContrast = 3.1;
constexpr double restingContrast = 2.6;

/// The smallest opacity, no less than `least`, that reaches the contrast to the background.
qreal opacityFor(const QColor &color, const QColor &background, qreal least, double contrast) {
    constexpr qreal step = 0.02;
    for (qreal opacity = least; opacity < 1.0; opacity += step) {
        const auto mixed = [&](float over, float below) {
            return below + (over - below) * static_cast<float>(opacity);
        };
        const QColor seen =
            QColor::fromRgbF(mixed(color.redF(), background.redF()), mixed(color.greenF(), background.greenF()),
                             mixed(color.blueF(), background.blueF()));
        if (contrastRatio(seen, background) >= contrast)
            return opacity;
    }
    return 1.0;
}

/// The position that the key moves to. Audio runs from left to right even in a right-to-left interface.
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

void WaveformBarsView::setColor(const QColor &color, const QColor &background) {
    if (m_color == color && m_background == background)
        return;
    m_color = color;
    m_background = background;
    m_played = readableOn(background, color, playedContrast);
    m_idleOpacity = opacityFor(m_played, background, faintestIdle, idleContrast);
    m_restingOpacity = opacityFor(m_played, background, faintestResting, restingContrast);
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
        announceProgress();
}

void WaveformBarsView::announceProgress() {
    if (std::exchange(m_announcedPercent, percent()) == percent())
        return;
    QAccessibleValueChangeEvent event(this, percent());
    QAccessible::updateAccessibility(&event);
    Q_EMIT positionAnnounced(percent());
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
    if (m_showsProgress) {
        painter.setOpacity(1.0);
        painter.setRenderHint(QPainter::Antialiasing, false);
        const qreal place = snapped(played * (width() - playheadWidth));
        painter.fillRect(QRectF(place, 0.0, playheadWidth, height()), ThemeColors::of(palette()).text);
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
    announceProgress();
}

} // namespace orlenta::shell
