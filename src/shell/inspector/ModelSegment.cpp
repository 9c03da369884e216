#include "shell/inspector/ModelSegment.h"

#include <QtGui/QPainter>

#include "shell/theme/Theme.h"

namespace orlenta::shell {

ModelSegment::ModelSegment(const controller::ModelDescription &model, QWidget *parent)
    : QRadioButton(parent), m_model(model) {
    setAccessibleName(QStringLiteral("%1, %2").arg(model.title, model.subtitle));
    setAccessibleDescription(model.description);
    setToolTip(model.description);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ModelSegment::sizeHint() const {
    const int unit = Theme::unit(this);
    return {fontMetrics().horizontalAdvance(m_model.title) + unit * 4, unit * 7};
}

bool ModelSegment::hitButton(const QPoint &position) const {
    return rect().contains(position);
}

void ModelSegment::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(isChecked()                   ? colors.accentSoft
                     : underMouse() && isEnabled() ? colors.surfaceHover
                                                   : colors.surface);
    painter.setPen(QPen(isChecked() || hasFocus() ? colors.accent : colors.borderStrong, hasFocus() ? 2.0 : 1.0));
    const qreal radius = Theme::radius(this);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), radius, radius);
    painter.setPen(isEnabled() ? colors.text : colors.textDisabled);
    painter.drawText(rect(), Qt::AlignCenter, m_model.title);
}

} // namespace orlenta::shell
