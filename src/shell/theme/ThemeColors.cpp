#include "shell/theme/ThemeColors.h"

#include <algorithm>
#include <cmath>

namespace orlenta::shell {
namespace {

ThemeColors makeLight() {
    return {
        .window = QColor(0xF4F5F8),
        .surface = QColor(0xFFFFFF),
        .surfaceHover = QColor(0xECEEF3),
        .surfaceSelected = QColor(0xF1F0FD),
        .field = QColor(0xFFFFFF),
        .border = QColor(0xDFE2E9),
        .borderStrong = QColor(0xC3C8D3),
        .borderControl = QColor(0x868D9C),
        .text = QColor(0x1B1E27),
        .textMuted = QColor(0x596071),
        .placeholder = QColor(0x646B7B),
        .textDisabled = QColor(0x9AA0AE),
        .accent = QColor(0x584FD0),
        .accentHover = QColor(0x4A41BE),
        .onAccent = QColor(0xFFFFFF),
        .accentSoft = QColor(0xE8E6FB),
        .danger = QColor(0xB8322A),
        .dangerSoft = QColor(0xFDECEA),
        .warning = QColor(0x8A5300),
        .warningSoft = QColor(0xFFF4DC),
    };
}

ThemeColors makeDark() {
    return {
        .window = QColor(0x16171B),
        .surface = QColor(0x1F2126),
        .surfaceHover = QColor(0x2B2E36),
        .surfaceSelected = QColor(0x262640),
        .field = QColor(0x1A1B20),
        .border = QColor(0x30333C),
        .borderStrong = QColor(0x484D5A),
        .borderControl = QColor(0x6B7180),
        .text = QColor(0xE9EBF0),
        .textMuted = QColor(0xA5ABB8),
        .placeholder = QColor(0x8D94A3),
        .textDisabled = QColor(0x646A78),
        .accent = QColor(0x968FF2),
        .accentHover = QColor(0xA8A2F6),
        .onAccent = QColor(0x14142A),
        .accentSoft = QColor(0x302E55),
        .danger = QColor(0xF0877F),
        .dangerSoft = QColor(0x3A2022),
        .warning = QColor(0xE6B45C),
        .warningSoft = QColor(0x3A2F17),
    };
}

double linearChannel(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color) {
    return 0.2126 * linearChannel(color.redF()) + 0.7152 * linearChannel(color.greenF()) +
           0.0722 * linearChannel(color.blueF());
}

} // namespace

const ThemeColors &ThemeColors::light() {
    static const ThemeColors colors = makeLight();
    return colors;
}

const ThemeColors &ThemeColors::dark() {
    static const ThemeColors colors = makeDark();
    return colors;
}

const ThemeColors &ThemeColors::of(const QPalette &palette) {
    return palette.color(QPalette::Active, QPalette::Window).lightness() < 128 ? dark() : light();
}

QPalette ThemeColors::palette() const {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, field);
    palette.setColor(QPalette::AlternateBase, surfaceHover);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, surface);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, danger);
    palette.setColor(QPalette::Light, surface);
    palette.setColor(QPalette::Midlight, surfaceHover);
    palette.setColor(QPalette::Mid, border);
    palette.setColor(QPalette::Dark, borderStrong);
    palette.setColor(QPalette::Shadow, QColor(0, 0, 0, 90));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, onAccent);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::LinkVisited, accentHover);
    palette.setColor(QPalette::PlaceholderText, placeholder);
    palette.setColor(QPalette::ToolTipBase, text);
    palette.setColor(QPalette::ToolTipText, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::PlaceholderText})
        palette.setColor(QPalette::Disabled, role, textDisabled);
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, borderStrong);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, textDisabled);
    return palette;
}

double contrastRatio(const QColor &a, const QColor &b) {
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor readableOn(const QColor &background, const QColor &color, double ratio) {
    const double towards = luminance(background) > 0.18 ? 0.0 : 1.0;
    for (int step = 0; step < 20; ++step) {
        const double share = step / 20.0;
        const auto mixed = [&](double channel) { return static_cast<float>(channel + (towards - channel) * share); };
        const QColor candidate = QColor::fromRgbF(mixed(color.redF()), mixed(color.greenF()), mixed(color.blueF()));
        if (contrastRatio(candidate, background) >= ratio)
            return candidate;
    }
    return towards > 0.5 ? QColor(Qt::white) : QColor(Qt::black);
}

} // namespace orlenta::shell
