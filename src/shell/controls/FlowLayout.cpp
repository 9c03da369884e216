#include "shell/controls/FlowLayout.h"

#include <algorithm>

#include <QtWidgets/QStyle>
#include <QtWidgets/QWidget>

namespace orlenta::shell {

FlowLayout::FlowLayout(QWidget *parent) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() {
    qDeleteAll(m_items);
}

void FlowLayout::addItem(QLayoutItem *item) {
    m_items.push_back(item);
}

int FlowLayout::count() const {
    return static_cast<int>(m_items.size());
}

QLayoutItem *FlowLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? m_items[static_cast<size_t>(index)] : nullptr;
}

QLayoutItem *FlowLayout::takeAt(int index) {
    QLayoutItem *item = itemAt(index);
    if (item != nullptr)
        m_items.erase(m_items.begin() + index);
    return item;
}

Qt::Orientations FlowLayout::expandingDirections() const {
    return {};
}

bool FlowLayout::hasHeightForWidth() const {
    return true;
}

int FlowLayout::heightForWidth(int width) const {
    return flow(QRect(0, 0, width, 0), Place::Measure);
}

QSize FlowLayout::sizeHint() const {
    QSize size(0, 0);
    for (const QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint();
        size = {size.width() + (size.width() > 0 ? spacing() : 0) + hint.width(),
                std::max(size.height(), hint.height())};
    }
    return size.grownBy(contentsMargins());
}

QSize FlowLayout::minimumSize() const {
    QSize size(0, 0);
    for (const QLayoutItem *item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size.grownBy(contentsMargins());
}

void FlowLayout::setGeometry(const QRect &rect) {
    QLayout::setGeometry(rect);
    flow(rect, Place::Set);
}

int FlowLayout::flow(const QRect &rect, Place place) const {
    const Qt::LayoutDirection direction =
        parentWidget() == nullptr ? Qt::LeftToRight : parentWidget()->layoutDirection();
    const QRect inner = rect.marginsRemoved(contentsMargins());
    QPoint next = inner.topLeft();
    int rowHeight = 0;
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty())
            continue;
        const QSize size = item->sizeHint();
        if (next.x() > inner.left() && next.x() + size.width() > inner.left() + inner.width()) {
            next = {inner.left(), next.y() + rowHeight + spacing()};
            rowHeight = 0;
        }
        if (place == Place::Set)
            item->setGeometry(QStyle::visualRect(direction, inner, QRect(next, size)));
        next.rx() += size.width() + spacing();
        rowHeight = std::max(rowHeight, size.height());
    }
    return next.y() + rowHeight - rect.top() + contentsMargins().bottom();
}

} // namespace orlenta::shell
