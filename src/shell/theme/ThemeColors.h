#pragma once

#include <QtGui/QColor>
#include <QtGui/QPalette>

namespace orlenta::shell {

/// The named colours of one appearance. Widgets that paint themselves get the set for their palette, so changing the
/// palette changes the appearance.
struct ThemeColors {
    QColor window;
    QColor surface;
    QColor surfaceHover;
    QColor surfaceSelected;
    QColor field;
    QColor border;
    /// Around what can be pressed but is told by more than its outline, such as a button with a word.
    QColor borderStrong;
    /// Around fields, boxes and marks, which only their outline tells: a contrast of 3 to what is beside it.
    QColor borderControl;
    QColor text;
    QColor textMuted;
    QColor placeholder;
    QColor textDisabled;
    QColor accent;
    QColor accentHover;
    QColor onAccent;
    QColor accentSoft;
    QColor danger;
    QColor dangerSoft;
    QColor warning;
    QColor warningSoft;

    [[nodiscard]] static const ThemeColors &light();
    [[nodiscard]] static const ThemeColors &dark();
    /// The light or dark set, whichever matches the lightness of the palette's window colour.
    [[nodiscard]] static const ThemeColors &of(const QPalette &palette);

    [[nodiscard]] QPalette palette() const;
};

/// The WCAG 2.1 contrast ratio of two opaque colours, 1 to 21.
[[nodiscard]] double contrastRatio(const QColor &a, const QColor &b);

/// Darkens or lightens `color` just enough for a contrast of `ratio` against `background`.
[[nodiscard]] QColor readableOn(const QColor &background, const QColor &color, double ratio = 4.5);

} // namespace orlenta::shell
