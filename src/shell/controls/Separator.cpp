#include "shell/controls/Separator.h"

namespace orlenta::shell {

Separator::Separator(Qt::Orientation orientation, QWidget *parent) : QFrame(parent) {
    setFrameShape(orientation == Qt::Horizontal ? QFrame::HLine : QFrame::VLine);
    setFrameShadow(QFrame::Plain);
    setForegroundRole(QPalette::Mid);
}

} // namespace orlenta::shell
