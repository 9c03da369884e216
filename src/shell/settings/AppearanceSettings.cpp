#include "shell/settings/AppearanceSettings.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>

#include "base/UserDefaults.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

constexpr int smallestScalePercent = 80;
constexpr int largestScalePercent = 150;
constexpr int scaleStepPercent = 10;

} // namespace

AppearanceSettings::AppearanceSettings(base::UserDefaults &defaults, QWidget *parent) : QWidget(parent) {
    auto *theme = new QComboBox;
    theme->setAccessibleName(u"Theme"_s);
    theme->setToolTip(u"Light, dark, or the same as the desktop"_s);
    theme->addItem(u"Auto"_s, u"auto"_s);
    theme->addItem(u"Light"_s, u"light"_s);
    theme->addItem(u"Dark"_s, u"dark"_s);
    theme->setCurrentIndex(std::max(0, theme->findData(defaults.appearance())));
    connect(theme, &QComboBox::activated, this, [&defaults, theme] {
        defaults.setAppearance(theme->currentData().toString());
        Theme::apply(Theme::appearanceFromText(defaults.appearance()));
    });

    auto *scale = new QComboBox;
    scale->setAccessibleName(u"Interface scale"_s);
    scale->setToolTip(u"The size of text and controls"_s);
    for (int percent = smallestScalePercent; percent <= largestScalePercent; percent += scaleStepPercent)
        scale->addItem(QStringLiteral("%1 %").arg(percent), percent);
    scale->setCurrentIndex(scale->findData(qRound(defaults.uiScale() * 10) * scaleStepPercent));
    connect(scale, &QComboBox::activated, this, [&defaults, scale] {
        defaults.setUiScale(scale->currentData().toInt() / 100.0);
        Theme::setUiScale(defaults.uiScale());
    });

    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->addRow(u"Theme"_s, theme);
    form->addRow(u"Scale"_s, scale);
}

} // namespace orlenta::shell
