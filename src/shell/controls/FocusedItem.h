#pragma once

#include <QtCore/QObject>
#include <QtCore/QPersistentModelIndex>

class QAbstractItemView;

namespace orlenta::shell {

/// Gives a view a current item only while it has the focus: Qt tells assistive technology that the current item is the
/// focused one, wherever the focus is. Belongs to the view. Main thread.
class FocusedItem final : public QObject {
    Q_OBJECT
public:
    explicit FocusedItem(QAbstractItemView &view);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPersistentModelIndex m_last;
};

} // namespace orlenta::shell
