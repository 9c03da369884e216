#pragma once

#include <QtWidgets/QStyledItemDelegate>

namespace orlenta::shell {

/// Draws a voice: a swatch in its cast colour, and its name above its traits.
class VoiceDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace orlenta::shell
