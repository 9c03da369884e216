#pragma once

#include <QtGui/QColor>
#include <QtGui/QPalette>

namespace orlenta::shell {

/// The named colours of one appearance. Widgets that paint for themselves ask for the set that belongs to their
/// palette, so that a change of the palette is all that a change of appearance takes.
struct ThemeColors {
    QColor window;
    QColor surface;
    QColor surfaceHover;
    QColor surfaceSelected;
    QColor field;
    QColor border;
    QColor borderStrong;
    QColor text;
    QColor textMuted;
    QColor placeholder;
    QColor textDisabled;
    QColor accent;
    QColor accentHover;
    QColor onAccent;
    QColor accentSoft;
    QColor danger;
    QColor scrollThumb;

    [[nodiscard]] static const ThemeColors &light();
    [[nodiscard]] static const ThemeColors &dark();
    /// The set whose window colour has the lightness of this palette's.
    [[nodiscard]] static const ThemeColors &of(const QPalette &palette);

    [[nodiscard]] QPalette palette() const;
};

/// Contrast of two opaque colours, 1 to 21, by the WCAG 2.1 formula over relative luminance.
[[nodiscard]] double contrastRatio(const QColor &a, const QColor &b);

/// `color`, darkened or lightened as little as it takes to reach a contrast of `ratio` against `background`.
[[nodiscard]] QColor readableOn(const QColor &background, const QColor &color, double ratio = 4.5);

} // namespace orlenta::shell
