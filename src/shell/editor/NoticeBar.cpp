#include "shell/editor/NoticeBar.h"

#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QToolButton>

#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

NoticeBar::NoticeBar(QWidget *parent)
    : QWidget(parent), m_icon(new QLabel(this)), m_text(new QLabel(this)), m_dismiss(new QToolButton(this)) {
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_icon->setAccessibleName(QStringLiteral("Warning"));
    m_dismiss->setIcon(Icon::named(QStringLiteral("close")));
    m_dismiss->setAutoRaise(true);
    m_dismiss->setFocusPolicy(Qt::StrongFocus);
    m_dismiss->setAccessibleName(QStringLiteral("Dismiss message"));
    m_dismiss->setToolTip(QStringLiteral("Dismiss"));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_icon);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_dismiss);
    connect(m_dismiss, &QToolButton::clicked, this, &NoticeBar::dismissed);
    applyMeasures();
    hide();
}

void NoticeBar::setMessage(const QString &message) {
    m_text->setText(message);
    const int side = Theme::iconSize(this);
    m_icon->setPixmap(
        Icon::named(QStringLiteral("warning"), Icon::Tint::Danger).pixmap(QSize(side, side), devicePixelRatioF()));
    setVisible(!message.isEmpty());
}

void NoticeBar::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colors.surface);
    painter.setPen(colors.border);
    painter.drawLine(rect().topLeft(), rect().topRight());
}

} // namespace orlenta::shell
