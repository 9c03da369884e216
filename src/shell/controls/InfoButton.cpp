#include "shell/controls/InfoButton.h"

#include <algorithm>

#include <QtGui/QScreen>
#include <QtWidgets/QFrame>
#include <QtWidgets/QVBoxLayout>

#include "shell/controls/TextLabel.h"
#include "shell/theme/Icon.h"

namespace orlenta::shell {

InfoButton::InfoButton(const QString &subject, const QStringList &paragraphs, QWidget *parent)
    : QToolButton(parent), m_subject(subject), m_paragraphs(paragraphs) {
    setIcon(Icon::named(QStringLiteral("info")));
    setAutoRaise(true);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAccessibleName(QStringLiteral("About %1").arg(subject));
    setAccessibleDescription(paragraphs.join(QLatin1Char('\n')));
    setToolTip(QStringLiteral("About %1").arg(subject));
    connect(this, &QToolButton::clicked, this, &InfoButton::openPopover);
}

void InfoButton::openPopover() {
    auto *frame = new QFrame(this, Qt::Popup);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    frame->setFrameShape(QFrame::StyledPanel);
    frame->setAccessibleName(m_subject);
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(14, 12, 14, 12);
    layout->setSpacing(8);
    layout->addWidget(new TextLabel(m_subject, TextLabel::Style::Heading));
    for (const QString &paragraph : m_paragraphs)
        layout->addWidget(new TextLabel(paragraph, TextLabel::Style::Body));

    frame->setFixedWidth(std::max(260, fontMetrics().averageCharWidth() * 46));
    frame->setFixedHeight(layout->totalHeightForWidth(frame->width()));
    const QRect available = screen()->availableGeometry();
    QPoint corner = mapToGlobal(QPoint(width() - frame->width(), height() + 4));
    corner.setX(
        std::clamp(corner.x(), available.left(), std::max(available.left(), available.right() - frame->width())));
    if (corner.y() + frame->height() > available.bottom())
        corner.setY(std::max(available.top(), mapToGlobal(QPoint(0, -4)).y() - frame->height()));
    frame->move(corner);
    m_popover = frame;
    frame->show();
}

} // namespace orlenta::shell
