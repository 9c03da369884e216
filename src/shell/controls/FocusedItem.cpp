#include "shell/controls/FocusedItem.h"

#include <QtCore/QEvent>
#include <QtWidgets/QAbstractItemView>

namespace orlenta::shell {

FocusedItem::FocusedItem(QAbstractItemView &view) : QObject(&view) {
    view.installEventFilter(this);
}

bool FocusedItem::eventFilter(QObject *watched, QEvent *event) {
    // While the view is destroyed, it isn't one any more.
    const auto *view = qobject_cast<const QAbstractItemView *>(watched);
    QItemSelectionModel *selection = view == nullptr ? nullptr : view->selectionModel();
    if (selection == nullptr)
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::FocusIn) {
        const QModelIndexList selected = selection->selectedIndexes();
        const QModelIndex current = selected.isEmpty() ? QModelIndex(m_last) : selected.first();
        if (current.isValid())
            selection->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    } else if (event->type() == QEvent::FocusOut) {
        m_last = selection->currentIndex();
        selection->clearCurrentIndex();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace orlenta::shell
