#include "shell/controls/WaveMark.h"

#include <array>

#include <QtGui/QPainter>

#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

constexpr std::array<double, 13> markHeights{0.16, 0.34, 0.58, 0.42, 0.78, 1.0, 0.64, 0.88, 0.5, 0.7, 0.38, 0.24, 0.14};

} // namespace

WaveMark::WaveMark(QWidget *parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

QSize WaveMark::sizeHint() const {
    const int unit = Theme::unit(this);
    return {unit * 2 * static_cast<int>(markHeights.size()), unit * 14};
}

void WaveMark::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ThemeColors::of(palette()).accent);
    const double step = width() / static_cast<double>(markHeights.size());
    for (std::size_t i = 0; i < markHeights.size(); ++i) {
        const double bar = height() * markHeights.at(i);
        painter.drawRoundedRect(
            QRectF(step * static_cast<double>(i) + step * 0.2, (height() - bar) / 2, step * 0.6, bar), step * 0.3,
            step * 0.3);
    }
}

} // namespace orlenta::shell
