#include "shell/tags/TagChip.h"

#include <optional>

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyle>

#include "shell/theme/Icon.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"
#include "tags/TagColors.h"

namespace orlenta::shell {
namespace {

constexpr double hintSize = 0.85;
constexpr double lineShare = 0.28;
constexpr double hoverShare = 0.09;
constexpr double pressedShare = 0.2;

QColor chipColor(const std::optional<tags::SrgbColor> &color, const QColor &neutral) {
    return color ? QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                                    static_cast<float>(color->blue))
                 : neutral;
}

QColor blended(const QColor &from, const QColor &to, double share) {
    const auto mixed = [share](float a, float b) {
        return static_cast<float>(static_cast<double>(a) * (1.0 - share) + static_cast<double>(b) * share);
    };
    return QColor::fromRgbF(mixed(from.redF(), to.redF()), mixed(from.greenF(), to.greenF()),
                            mixed(from.blueF(), to.blueF()));
}

} // namespace

TagChipColors TagChipColors::of(tags::TagCategory category, const QPalette &palette) {
    const ThemeColors &theme = ThemeColors::of(palette);
    const auto appearance = &theme == &ThemeColors::dark() ? tags::TagAppearance::Dark : tags::TagAppearance::Light;
    const QColor fill = chipColor(tags::chipBackground(category, appearance), theme.surface);
    const QColor text = readableOn(fill, chipColor(tags::chipText(category, appearance), theme.text));
    return {fill, text, blended(fill, text, lineShare)};
}

TagChip::TagChip(const QString &label, tags::TagCategory category, QWidget *parent)
    : QPushButton(QString(label).replace(QLatin1Char('&'), QLatin1String("&&")), parent), m_label(label),
      m_category(category) {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void TagChip::setHint(const QString &hint) {
    m_hint = hint;
    updateGeometry();
    update();
}

QSize TagChip::sizeHint() const {
    const int unit = Theme::unit(this);
    int width = fontMetrics().horizontalAdvance(m_label) + unit * 5;
    if (!m_hint.isEmpty())
        width += QFontMetrics(hintFont()).horizontalAdvance(m_hint) + unit * 2;
    if (menu() != nullptr)
        width += markWidth();
    return {width, fontMetrics().height() + unit * 2};
}

QSize TagChip::minimumSizeHint() const {
    return sizeHint();
}

QFont TagChip::hintFont() const {
    QFont smaller = font();
    if (smaller.pointSizeF() > 0.0)
        smaller.setPointSizeF(smaller.pointSizeF() * hintSize);
    else
        smaller.setPixelSize(qRound(smaller.pixelSize() * hintSize));
    return smaller;
}

int TagChip::markWidth() const {
    return Theme::unit(this) * 4;
}

QColor TagChip::fillColor(const TagChipColors &colors) const {
    if (!isEnabled())
        return palette().color(QPalette::Window);
    const bool isPressed = isDown() || (menu() != nullptr && menu()->isVisible());
    return blended(colors.fill, colors.text, isPressed ? pressedShare : underMouse() ? hoverShare : 0.0);
}

void TagChip::keyPressEvent(QKeyEvent *event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && !event->isAutoRepeat() && menu() == nullptr)
        click();
    else if (isReturn && menu() != nullptr)
        showMenu();
    else
        QPushButton::keyPressEvent(event);
}

void TagChip::paintEvent(QPaintEvent *) {
    const TagChipColors colors = TagChipColors::of(m_category, palette());
    const ThemeColors &theme = ThemeColors::of(palette());
    const int unit = Theme::unit(this);
    const qreal radius = height() / 2.0;
    const QColor fill = fillColor(colors);
    const QColor ink = isEnabled() ? readableOn(fill, colors.text) : theme.textDisabled;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(isEnabled() ? colors.line : theme.border, 1.0));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);

    QRect inner = rect().adjusted(unit * 5 / 2, 0, -unit * 5 / 2, 0);
    painter.setPen(ink);
    painter.drawText(QStyle::visualRect(layoutDirection(), rect(), inner), Qt::AlignVCenter | Qt::AlignLeading,
                     m_label);
    if (menu() != nullptr) {
        const QRect mark(inner.right() + 1 - markWidth() + unit, (height() - unit * 3) / 2, unit * 3, unit * 3);
        Icon::named(QStringLiteral("chevron-down"))
            .paint(&painter, QStyle::visualRect(layoutDirection(), rect(), mark), Qt::AlignCenter,
                   isEnabled() ? QIcon::Normal : QIcon::Disabled);
    }
    if (!m_hint.isEmpty()) {
        painter.setFont(hintFont());
        painter.setPen(isEnabled() ? readableOn(fill, theme.textMuted) : theme.textDisabled);
        painter.drawText(QStyle::visualRect(layoutDirection(), rect(), inner), Qt::AlignVCenter | Qt::AlignTrailing,
                         m_hint);
    }
    if (hasFocus())
        painting::drawFocusRing(&painter, rect(), radius, palette());
}

} // namespace orlenta::shell
