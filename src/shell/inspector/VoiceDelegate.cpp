#include "shell/inspector/VoiceDelegate.h"

#include <QtGui/QPainter>

#include "shell/inspector/VoiceListModel.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {
namespace {

QFont traitsFont(const QFont &font) {
    QFont small = font;
    if (small.pointSizeF() > 0.0)
        small.setPointSizeF(small.pointSizeF() * 0.88);
    else
        small.setPixelSize(qRound(small.pixelSize() * 0.88));
    return small;
}

} // namespace

QSize VoiceDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const {
    const int unit = Theme::unit(option.fontMetrics);
    return {unit * 20, option.fontMetrics.height() + QFontMetrics(traitsFont(option.font)).height() + unit * 2};
}

void VoiceDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const {
    const ThemeColors &colors = ThemeColors::of(option.palette);
    const int unit = Theme::unit(option.fontMetrics);
    const bool isChosen = option.state.testFlag(QStyle::State_Selected);
    const bool isHovered = option.state.testFlag(QStyle::State_MouseOver);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QRectF row = QRectF(option.rect).adjusted(2, 1, -2, -1);
    if (isChosen || isHovered) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(isChosen ? colors.accentSoft : colors.surfaceHover);
        painter->drawRoundedRect(row, unit, unit);
    }
    if (option.state.testFlag(QStyle::State_HasFocus)) {
        painter->setPen(QPen(colors.accent, 1));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(row.adjusted(0.5, 0.5, -0.5, -0.5), unit, unit);
    }

    const int swatch = unit * 2;
    const QRectF dot(option.rect.left() + unit * 2.0, option.rect.center().y() - swatch / 2.0 + 0.5, swatch, swatch);
    const auto cast = index.data(VoiceListModel::CastColorRole).value<QColor>();
    painter->setBrush(cast.isValid() ? QBrush(cast) : QBrush(Qt::NoBrush));
    painter->setPen(cast.isValid() ? QPen(Qt::NoPen) : QPen(colors.borderControl, 1.2));
    painter->drawEllipse(dot);

    QRect text = option.rect.adjusted(unit * 5, unit, -unit * 2, -unit);
    QFont name = option.font;
    name.setWeight(isChosen ? QFont::DemiBold : QFont::Normal);
    painter->setFont(name);
    painter->setPen(colors.text);
    const QFontMetrics nameMetrics(name);
    painter->drawText(text, Qt::AlignLeft | Qt::AlignTop,
                      nameMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, text.width()));
    text.setTop(text.top() + nameMetrics.height());
    const QFont small = traitsFont(option.font);
    painter->setFont(small);
    painter->setPen(colors.textMuted);
    const QString traits = index.data(VoiceListModel::TraitsRole).toString();
    painter->drawText(text, Qt::AlignLeft | Qt::AlignTop,
                      QFontMetrics(small).elidedText(traits, Qt::ElideRight, text.width()));
    painter->restore();
}

} // namespace orlenta::shell
