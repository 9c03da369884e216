#include <gtest/gtest.h>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

int inkOf(const QImage &image) {
    int ink = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ink += qAlpha(image.pixel(x, y)) > 40 ? 1 : 0;
    return ink;
}

QColor strongestColor(const QImage &image) {
    QRgb best = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > qAlpha(best))
                best = image.pixel(x, y);
    return QColor::fromRgb(best);
}

TEST(Theme, TextIsReadableOnEverySurfaceOfBothAppearances) {
    for (const ThemeColors *colors : {&ThemeColors::light(), &ThemeColors::dark()}) {
        for (const QColor &background : {colors->window, colors->surface, colors->surfaceSelected, colors->field}) {
            for (const QColor &ink : {colors->text, colors->textMuted, colors->placeholder, colors->accent,
                                      colors->danger, colors->warning})
                EXPECT_GE(contrastRatio(ink, background), 4.5)
                    << ink.name().toStdString() << " on " << background.name().toStdString();
        }
        for (const QColor &background : {colors->window, colors->surface, colors->field})
            EXPECT_GE(contrastRatio(colors->borderControl, background), 3.0) << background.name().toStdString();
        EXPECT_GE(contrastRatio(colors->warning, colors->warningSoft), 4.5);
        EXPECT_GE(contrastRatio(colors->danger, colors->dangerSoft), 4.5);
        EXPECT_GE(contrastRatio(colors->onAccent, colors->accent), 4.5);
        EXPECT_GE(contrastRatio(colors->onAccent, colors->accentHover), 4.5);
    }
}

TEST(Theme, EveryCastColourIsMadeReadableOnItsSurface) {
    for (const ThemeColors *colors : {&ThemeColors::light(), &ThemeColors::dark()})
        for (const QRgb cast : {0x7F78DEu, 0xFFFF00u, 0x101010u, 0xFFFFFFu, 0x33AA55u})
            EXPECT_GE(contrastRatio(readableOn(colors->surface, QColor(cast)), colors->surface), 4.5);
}

TEST(Theme, ChangesTheWholeApplicationAtOnce) {
    Theme::apply(Appearance::Dark);
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), ThemeColors::dark().window);
    EXPECT_EQ(&ThemeColors::of(QApplication::palette()), &ThemeColors::dark());
    Theme::apply(Theme::appearanceFromText(QStringLiteral("light")));
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), ThemeColors::light().window);
    EXPECT_EQ(Theme::appearanceFromText(QStringLiteral("sepia")), Appearance::Auto);
}

TEST(Theme, TheInterfaceScaleAffectsEveryMeasureAndCanBeReset) {
    const int before = QFontMetrics(QApplication::font()).height();
    const int buttonBefore = QPushButton(QStringLiteral("Generate")).sizeHint().height();
    Theme::setUiScale(2.0);
    EXPECT_GE(QFontMetrics(QApplication::font()).height(), 2 * before - 2);
    EXPECT_GE(QPushButton(QStringLiteral("Generate")).sizeHint().height(), 2 * buttonBefore - 6);
    EXPECT_EQ(Theme::scriptFont().pixelSize(), 28);
    Theme::setUiScale(1.0);
    EXPECT_EQ(QFontMetrics(QApplication::font()).height(), before);
}

TEST(Icon, EveryIconDrawsAtEverySizeAndScale) {
    ASSERT_GE(Icon::names().size(), 30);
    for (const QString &name : Icon::names())
        for (const qreal scale : {1.0, 1.5, 2.0}) {
            const QPixmap pixmap = Icon::named(name).pixmap(QSize(16, 16), scale);
            EXPECT_EQ(pixmap.size(), QSize(16, 16) * scale) << name.toStdString();
            EXPECT_GT(inkOf(pixmap.toImage()), 8) << name.toStdString();
        }
    EXPECT_TRUE(Icon::named(QStringLiteral("no such icon")).isNull());
}

TEST(Icon, UsesTheColourOfTheCurrentPalette) {
    const QIcon icon = Icon::named(QStringLiteral("stop"));
    EXPECT_EQ(strongestColor(icon.pixmap(32, 32).toImage()), ThemeColors::light().text);
    Theme::apply(Appearance::Dark);
    EXPECT_EQ(strongestColor(icon.pixmap(32, 32).toImage()), ThemeColors::dark().text);
    EXPECT_EQ(strongestColor(icon.pixmap(32, 32, QIcon::Disabled).toImage()), ThemeColors::dark().textDisabled);
    Theme::apply(Appearance::Light);
}

} // namespace
} // namespace orlenta::shell
