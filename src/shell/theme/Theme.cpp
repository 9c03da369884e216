#include "shell/theme/Theme.h"

#include <algorithm>

#include <QtCore/QPointer>
#include <QtCore/QVariant>
#include <QtGui/QFontDatabase>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QToolTip>

#include "shell/theme/FontChanges.h"
#include "shell/theme/OrlentaStyle.h"
#include "shell/theme/SystemAppearance.h"

static void initFontResources() {
    Q_INIT_RESOURCE(fonts);
}

namespace orlenta::shell {
namespace {

constexpr const char *buttonRoleProperty = "orlentaButtonRole";
constexpr double scriptFontPixels = 14.0;

QPointer<SystemAppearance> &systemAppearance() {
    static QPointer<SystemAppearance> instance;
    return instance;
}

void applyPalette(const ThemeColors &colors) {
    if (qobject_cast<OrlentaStyle *>(QApplication::style()) == nullptr)
        QApplication::setStyle(new OrlentaStyle);
    const QPalette palette = colors.palette();
    QApplication::setPalette(palette);
    QToolTip::setPalette(palette);
}

const QFont &unscaledFont() {
    static const QFont font = QApplication::font();
    return font;
}

double &scaleInForce() {
    static double scale = 1.0;
    return scale;
}

const QString &scriptFontFamily() {
    static const QString family = [] {
        initFontResources();
        QString found;
        for (const QLatin1String face :
             {QLatin1String("400-normal"), QLatin1String("400-italic"), QLatin1String("700-normal")}) {
            const int id =
                QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/ia-writer-quattro-latin-%1.woff2").arg(face));
            const QStringList families = QFontDatabase::applicationFontFamilies(id);
            if (found.isEmpty() && !families.isEmpty())
                found = families.first();
        }
        return found;
    }();
    return family;
}

} // namespace

Appearance Theme::appearanceFromText(const QString &text) {
    if (text == QLatin1String("light"))
        return Appearance::Light;
    return text == QLatin1String("dark") ? Appearance::Dark : Appearance::Auto;
}

void Theme::apply(Appearance appearance) {
    delete systemAppearance();
    if (appearance != Appearance::Auto) {
        applyPalette(appearance == Appearance::Dark ? ThemeColors::dark() : ThemeColors::light());
        return;
    }
    auto *system = new SystemAppearance(qApp);
    systemAppearance() = system;
    const auto follow = [system] { applyPalette(system->prefersDark() ? ThemeColors::dark() : ThemeColors::light()); };
    QObject::connect(system, &SystemAppearance::prefersDarkChanged, qApp, follow);
    follow();
}

void Theme::setUiScale(double scale) {
    QFont font = unscaledFont();
    scaleInForce() = std::clamp(scale, 0.8, 2.0);
    if (font.pointSizeF() > 0.0)
        font.setPointSizeF(font.pointSizeF() * scaleInForce());
    else
        font.setPixelSize(qRound(font.pixelSize() * scaleInForce()));
    QApplication::setFont(font);
    QToolTip::setFont(font);
    Q_EMIT FontChanges::notifier().fontChanged();
    // A combo box keeps its smallest size through a change of the font, but not of the style. Queued, so that the box
    // has its new font by then.
    for (QWidget *widget : QApplication::allWidgets())
        if (qobject_cast<QComboBox *>(widget) != nullptr)
            QCoreApplication::postEvent(widget, new QEvent(QEvent::StyleChange));
}

double Theme::uiScale() {
    return scaleInForce();
}

QFont Theme::scriptFont() {
    QFont font = unscaledFont();
    if (!scriptFontFamily().isEmpty())
        font.setFamily(scriptFontFamily());
    font.setPixelSize(qRound(scriptFontPixels * scaleInForce()));
    return font;
}

int Theme::unit(const QWidget *widget) {
    return unit(widget->fontMetrics());
}

int Theme::unit(const QFontMetrics &metrics) {
    return std::max(3, qRound(metrics.height() / 4.0));
}

int Theme::iconSize(const QWidget *widget) {
    return widget->fontMetrics().height();
}

qreal Theme::radius(const QWidget *widget) {
    return unit(widget) * 1.5;
}

void Theme::setRole(QAbstractButton *button, ButtonRole role) {
    button->setProperty(buttonRoleProperty, static_cast<int>(role));
    button->update();
}

ButtonRole Theme::role(const QWidget *button) {
    const QVariant value = button == nullptr ? QVariant() : button->property(buttonRoleProperty);
    return value.isValid() ? static_cast<ButtonRole>(value.toInt()) : ButtonRole::Normal;
}

} // namespace orlenta::shell
