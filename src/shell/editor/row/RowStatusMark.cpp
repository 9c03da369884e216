#include "shell/editor/row/RowStatusMark.h"

#include <QtGui/QPainter>

#include "shell/editor/row/BusyIndicator.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

QIcon iconFor(RowStatus status) {
    switch (status) {
    case RowStatus::Done:
    case RowStatus::Generating:
        return {};
    case RowStatus::NoVoice:
        return Icon::named(u"help"_s, Icon::Tint::Muted);
    case RowStatus::Waiting:
        return Icon::named(u"clock"_s, Icon::Tint::Muted);
    case RowStatus::NotGenerated:
        return Icon::named(u"circle"_s, Icon::Tint::Muted);
    case RowStatus::Stale:
        return Icon::named(u"half-circle"_s, Icon::Tint::Warning);
    case RowStatus::FileMissing:
        return Icon::named(u"link-broken"_s, Icon::Tint::Danger);
    }
    Q_UNREACHABLE();
}

} // namespace

RowStatusMark::RowStatusMark(QWidget *parent) : QWidget(parent), m_busy(new BusyIndicator(this)) {
    m_busy->hide();
}

void RowStatusMark::setContent(qsizetype number, RowStatus status, const QString &words) {
    setToolTip(words);
    setAccessibleName(words.isEmpty() ? QString() : u"Status of line %1, %2"_s.arg(QString::number(number), words));
    if (std::exchange(m_status, status) == status)
        return;
    m_busy->setVisible(status == RowStatus::Generating);
    update();
}

QSize RowStatusMark::sizeHint() const {
    const int side = Theme::unit(this) * 6;
    return {side, side};
}

QRect RowStatusMark::iconPlace() const {
    QRect place(0, 0, Theme::iconSize(this), Theme::iconSize(this));
    place.moveCenter(rect().center());
    return place;
}

void RowStatusMark::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    iconFor(m_status).paint(&painter, iconPlace());
}

void RowStatusMark::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    m_busy->setGeometry(iconPlace());
}

} // namespace orlenta::shell
