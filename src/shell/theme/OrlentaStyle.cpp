#include "shell/theme/OrlentaStyle.h"

#include <algorithm>

#include <QtGui/QPainter>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QSlider>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOption>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

#include "shell/theme/Icon.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

constexpr int toolTipDelayMilliseconds = 300;

int styleUnit(const QStyleOption *option, const QWidget *widget) {
    if (widget != nullptr)
        return Theme::unit(widget);
    return option != nullptr ? Theme::unit(option->fontMetrics) : 4;
}

bool isPrimary(const QStyleOptionButton &button, const QWidget *widget) {
    return button.features.testFlag(QStyleOptionButton::DefaultButton) || Theme::role(widget) == ButtonRole::Primary;
}

} // namespace

OrlentaStyle::OrlentaStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

void OrlentaStyle::polish(QWidget *widget) {
    QProxyStyle::polish(widget);
    // Tool tips and the messages of Qt's own dialogs are labels too. With Qt's default, a name in them that looks like
    // HTML would be shown as such and could make the application read files.
    if (auto *label = qobject_cast<QLabel *>(widget); label != nullptr && label->textFormat() == Qt::AutoText)
        label->setTextFormat(Qt::PlainText);
    if (qobject_cast<QAbstractButton *>(widget) != nullptr || qobject_cast<QComboBox *>(widget) != nullptr ||
        qobject_cast<QScrollBar *>(widget) != nullptr || qobject_cast<QSlider *>(widget) != nullptr ||
        qobject_cast<QTabBar *>(widget) != nullptr)
        widget->setAttribute(Qt::WA_Hover);
}

void OrlentaStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                 const QWidget *widget) const {
    switch (element) {
    case PE_PanelButtonCommand:
        return painting::drawPushButtonPanel(painter, *option, widget);
    case PE_PanelButtonTool:
        return painting::drawToolButtonPanel(painter, *option, widget);
    case PE_PanelLineEdit: {
        const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
        if (frame != nullptr && frame->lineWidth <= 0)
            return;
        return painting::drawFieldPanel(painter, *option);
    }
    case PE_IndicatorCheckBox:
        return painting::drawCheckIndicator(painter, *option);
    case PE_IndicatorRadioButton:
        return painting::drawRadioIndicator(painter, *option);
    case PE_PanelMenu:
        return painting::drawPopupPanel(painter, *option);
    // Already drawn with the control's panel.
    case PE_FrameLineEdit:
    case PE_FrameMenu:
    case PE_FrameButtonTool:
    case PE_FrameDefaultButton:
    case PE_FrameTabBarBase:
        return;
    case PE_FrameFocusRect:
        // A tool button without a frame has no panel. Other controls draw the ring with their panel.
        if (qobject_cast<const QToolButton *>(widget) != nullptr)
            painting::drawFocusRing(painter, widget->rect(), Theme::radius(widget), option->palette);
        else if (qobject_cast<const QAbstractButton *>(widget) == nullptr &&
                 qobject_cast<const QComboBox *>(widget) == nullptr && qobject_cast<const QSlider *>(widget) == nullptr)
            painting::drawFocusRing(painter, option->rect, styleUnit(option, widget), option->palette);
        return;
    default:
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
}

void OrlentaStyle::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                               const QWidget *widget) const {
    if (element == CE_TabBarTabShape) {
        if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option))
            return painting::drawTab(painter, *tab);
    }
    if (element == CE_TabBarTabLabel) {
        if (const auto *tab = qstyleoption_cast<const QStyleOptionTab *>(option)) {
            QStyleOptionTab label(*tab);
            const ThemeColors &colors = ThemeColors::of(tab->palette);
            label.state.setFlag(State_HasFocus, false);
            label.palette.setColor(QPalette::WindowText,
                                   tab->state.testFlag(State_Selected) ? colors.text : colors.textMuted);
            return QProxyStyle::drawControl(element, &label, painter, widget);
        }
    }
    // Fusion draws the line below the bar in pieces, which meet only at some scales.
    if (element == CE_MenuBarEmptyArea)
        return painting::drawMenuBarArea(painter, *option, widget);
    if (element == CE_MenuBarItem) {
        if (const auto *title = qstyleoption_cast<const QStyleOptionMenuItem *>(option))
            return painting::drawMenuTitle(painter, *title, widget);
    }
    if (element == CE_PushButtonLabel) {
        const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        if (button != nullptr && isPrimary(*button, widget) && button->state.testFlag(State_Enabled)) {
            QStyleOptionButton label(*button);
            label.palette.setColor(QPalette::ButtonText, ThemeColors::of(button->palette).onAccent);
            return QProxyStyle::drawControl(element, &label, painter, widget);
        }
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void OrlentaStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
                                      const QWidget *widget) const {
    if (control == CC_ScrollBar) {
        if (const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option))
            return painting::drawScrollBar(painter, *bar,
                                           subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget));
    }
    if (control == CC_Slider) {
        const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
        if (slider != nullptr && slider->tickPosition == QSlider::NoTicks)
            return painting::drawSlider(painter, *slider,
                                        proxy()->subControlRect(CC_Slider, option, SC_SliderGroove, widget),
                                        proxy()->subControlRect(CC_Slider, option, SC_SliderHandle, widget));
    }
    if (control == CC_ComboBox) {
        if (const auto *box = qstyleoption_cast<const QStyleOptionComboBox *>(option))
            return painting::drawComboBox(painter, *box,
                                          proxy()->subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget));
    }
    QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect OrlentaStyle::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
                                   const QWidget *widget) const {
    // Keep the text clear of the rounded corners.
    if (control == CC_ComboBox && part == SC_ComboBoxEditField)
        return QProxyStyle::subControlRect(control, option, part, widget).adjusted(styleUnit(option, widget), 0, 0, 0);
    const auto *bar = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (control != CC_ScrollBar || bar == nullptr)
        return QProxyStyle::subControlRect(control, option, part, widget);
    const bool vertical = bar->orientation == Qt::Vertical;
    const int length = vertical ? bar->rect.height() : bar->rect.width();
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    const int shortest = proxy()->pixelMetric(PM_ScrollBarSliderMin, option, widget);
    int thumb = length;
    if (range > 0)
        thumb = std::clamp(static_cast<int>(qint64(length) * bar->pageStep / (range + bar->pageStep)),
                           std::min(shortest, length), length);
    const int start =
        sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition, length - thumb, bar->upsideDown);
    const auto along = [&](int from, int size) {
        const QRect &r = bar->rect;
        return vertical ? QRect(r.left(), r.top() + from, r.width(), size)
                        : QRect(r.left() + from, r.top(), size, r.height());
    };
    switch (part) {
    case SC_ScrollBarSlider:
        return along(start, thumb);
    case SC_ScrollBarGroove:
        return bar->rect;
    case SC_ScrollBarSubPage:
        return along(0, start);
    case SC_ScrollBarAddPage:
        return along(start + thumb, length - start - thumb);
    default:
        return {};
    }
}

int OrlentaStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const {
    const int unit = styleUnit(option, widget);
    switch (metric) {
    case PM_ScrollBarExtent:
        return std::max(12, unit * 3);
    case PM_ScrollBarSliderMin:
        return unit * 9;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabOverlap:
        return 0;
    case PM_TabBarTabHSpace:
        return unit * 6;
    case PM_TabBarTabVSpace:
        return unit * 4;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return unit * 4 + 1;
    case PM_SliderLength:
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return unit * 4 + 2;
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
        return unit * 4;
    case PM_ToolBarItemSpacing:
        return unit;
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return unit * 2;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QRect OrlentaStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const {
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const int unit = styleUnit(option, widget);
    return element == SE_LineEditContents ? rect.adjusted(unit, 0, -unit, 0) : rect;
}

int OrlentaStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                            QStyleHintReturn *returnData) const {
    switch (hint) {
    case SH_EtchDisabledText:
    case SH_ComboBox_Popup:
    case SH_UnderlineShortcut:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_ToolTip_WakeUpDelay:
        return toolTipDelayMilliseconds;
    case SH_Slider_AbsoluteSetButtons:
        return static_cast<int>(Qt::LeftButton);
    case SH_ScrollBar_LeftClickAbsolutePosition:
        return 0;
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QIcon OrlentaStyle::standardIcon(StandardPixmap which, const QStyleOption *option, const QWidget *widget) const {
    if (which == SP_MessageBoxWarning)
        return Icon::named(QStringLiteral("warning"), Icon::Tint::Danger);
    return QProxyStyle::standardIcon(which, option, widget);
}

QSize OrlentaStyle::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                     const QWidget *widget) const {
    const int unit = styleUnit(option, widget);
    switch (type) {
    case CT_PushButton: {
        const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
        const bool isBareIcon = button != nullptr && button->text.isEmpty();
        const bool isQuiet = Theme::role(widget) == ButtonRole::Quiet;
        return {size.width() + unit * (isBareIcon ? 2
                                       : isQuiet  ? 4
                                                  : 6),
                std::max(size.height(), option->fontMetrics.height()) + unit * (isQuiet ? 2 : 3)};
    }
    case CT_ToolButton:
        return {size.width() + unit * 2, size.height() + unit * 2};
    case CT_LineEdit:
        return {size.width(), std::max(size.height(), option->fontMetrics.height() + unit * 3)};
    case CT_ComboBox: {
        const QSize natural = QProxyStyle::sizeFromContents(type, option, size, widget);
        return {natural.width() + unit * 2, std::max(natural.height(), option->fontMetrics.height() + unit * 3)};
    }
    default:
        return QProxyStyle::sizeFromContents(type, option, size, widget);
    }
}

} // namespace orlenta::shell
