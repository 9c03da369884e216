#include "shell/inspector/ModelCard.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>

#include "shell/controls/InfoButton.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

ModelCard::ModelCard(const controller::ModelDescription &model, QWidget *parent)
    : QRadioButton(parent), m_model(model), m_info(new InfoButton(model.title, model.information, this)) {
    setAccessibleName(QStringLiteral("%1, %2").arg(model.title, model.subtitle));
    setAccessibleDescription(model.description);
    setToolTip(model.description);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QFont ModelCard::titleFont() const {
    QFont title = font();
    title.setWeight(QFont::DemiBold);
    return title;
}

QFont ModelCard::smallFont() const {
    QFont small = font();
    if (small.pointSizeF() > 0.0)
        small.setPointSizeF(small.pointSizeF() * 0.9);
    else
        small.setPixelSize(qRound(small.pixelSize() * 0.9));
    return small;
}

int ModelCard::padding() const {
    return Theme::unit(this) * 2;
}

QSize ModelCard::sizeHint() const {
    const int width = QFontMetrics(titleFont()).horizontalAdvance(m_model.title) +
                      QFontMetrics(smallFont()).horizontalAdvance(m_model.subtitle) + padding() * 8;
    return {width, heightForWidth(width)};
}

QSize ModelCard::minimumSizeHint() const {
    return {padding() * 12, sizeHint().height()};
}

int ModelCard::heightForWidth(int width) const {
    const int inner = std::max(1, width - 2 * padding());
    const QRect text =
        QFontMetrics(smallFont()).boundingRect(QRect(0, 0, inner, 10'000), Qt::TextWordWrap, m_model.description);
    return QFontMetrics(titleFont()).height() + Theme::unit(this) / 2 + text.height() + 2 * padding();
}

void ModelCard::changeEvent(QEvent *event) {
    QRadioButton::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

void ModelCard::resizeEvent(QResizeEvent *event) {
    QRadioButton::resizeEvent(event);
    // Place the button by hand, because a layout would override the card's height.
    const QSize size = m_info->sizeHint();
    m_info->setGeometry(width() - size.width() - Theme::unit(this), Theme::unit(this), size.width(), size.height());
}

bool ModelCard::hitButton(const QPoint &position) const {
    return rect().contains(position);
}

void ModelCard::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(isChecked()                   ? colors.accentSoft
                     : underMouse() && isEnabled() ? colors.surfaceHover
                                                   : colors.surface);
    painter.setPen(QPen(isChecked() || hasFocus() ? colors.accent : colors.border, hasFocus() ? 2.0 : 1.0));
    const qreal radius = Theme::radius(this);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);

    QRect inner = rect().adjusted(padding(), padding(), -padding(), -padding());
    const QFontMetrics title(titleFont());
    painter.setFont(titleFont());
    painter.setPen(isEnabled() ? colors.text : colors.textDisabled);
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop, m_model.title);
    painter.setFont(smallFont());
    painter.setPen(isEnabled() ? colors.textMuted : colors.textDisabled);
    const int subtitle = title.horizontalAdvance(m_model.title) + padding();
    const int rise = title.ascent() - QFontMetrics(smallFont()).ascent();
    painter.drawText(inner.adjusted(subtitle, rise, -padding() * 2, 0), Qt::AlignLeft | Qt::AlignTop, m_model.subtitle);
    inner.setTop(inner.top() + title.height() + Theme::unit(this) / 2);
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_model.description);
}

} // namespace orlenta::shell
