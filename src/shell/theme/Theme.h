#pragma once

#include <QtCore/QString>
#include <QtGui/QFont>

#include "shell/theme/ThemeColors.h"

class QAbstractButton;
class QFontMetrics;
class QWidget;

namespace orlenta::shell {

enum class Appearance {
    /// Follows the desktop.
    Auto,
    Light,
    Dark
};

/// The visual weight of a button.
enum class ButtonRole {
    Normal,
    /// The main action: filled in the accent colour.
    Primary,
    /// No background until hovered.
    Quiet
};

/// The style, palette and font of the application. Main thread, with a QApplication.
class Theme final {
public:
    /// Parses the stored "light" or "dark"; any other text is Auto.
    [[nodiscard]] static Appearance appearanceFromText(const QString &text);

    /// Sets style and palette of all windows immediately. Auto also follows later changes of the desktop's preference.
    static void apply(Appearance appearance);

    /// Sets the interface scale, 0.8 to 2. Scales the application font and all measures derived from it.
    static void setUiScale(double scale);
    [[nodiscard]] static double uiScale();

    /// The font for script text at the current interface scale.
    [[nodiscard]] static QFont scriptFont();

    /// The unit of spacing: a quarter of the font's height, at least 3 pixels.
    [[nodiscard]] static int unit(const QWidget *widget);
    [[nodiscard]] static int unit(const QFontMetrics &metrics);
    /// Size of a square icon that matches the widget's text.
    [[nodiscard]] static int iconSize(const QWidget *widget);
    [[nodiscard]] static qreal radius(const QWidget *widget);

    static void setRole(QAbstractButton *button, ButtonRole role);
    [[nodiscard]] static ButtonRole role(const QWidget *button);
};

} // namespace orlenta::shell
