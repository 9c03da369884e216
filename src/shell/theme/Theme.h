#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>

#include "shell/theme/ThemeColors.h"

class QAbstractButton;
class QFontMetrics;
class QWidget;

namespace orlenta::shell {

enum class Appearance {
    /// As the desktop asks for.
    Auto,
    Light,
    Dark
};

/// How much weight a button has among its neighbours.
enum class ButtonRole {
    Normal,
    /// The one action that a place is about: filled in the accent colour.
    Primary,
    /// Bare until pointed at.
    Quiet
};

/// The application's look: style, palette and font of the whole process. Main thread, with a QApplication.
class Theme final {
public:
    /// "light" and "dark" as stored; any other text is Auto.
    [[nodiscard]] static Appearance appearanceFromText(const QString &text);

    /// Sets style and palette; takes effect at once in every window. Auto also follows later changes of the desktop's
    /// choice.
    static void apply(Appearance appearance);

    /// Sets the interface scale: the application's font, and with it every measure taken from it, times `scale`, which
    /// is 0.8 to 2.
    static void setUiScale(double scale);
    [[nodiscard]] static double uiScale();

    /// The font of script text at the interface scale.
    [[nodiscard]] static QFont scriptFont();

    /// The step of all spacing: a quarter of the font's height, at least 3 pixels.
    [[nodiscard]] static int unit(const QWidget *widget);
    [[nodiscard]] static int unit(const QFontMetrics &metrics);
    /// Side of a square icon that goes with the widget's text.
    [[nodiscard]] static int iconSize(const QWidget *widget);
    [[nodiscard]] static qreal radius(const QWidget *widget);

    static void setRole(QAbstractButton *button, ButtonRole role);
    [[nodiscard]] static ButtonRole role(const QWidget *button);
};

} // namespace orlenta::shell
