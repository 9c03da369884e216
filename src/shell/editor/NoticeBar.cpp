#include "shell/editor/NoticeBar.h"

#include <QtCore/QEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/controls/NoticeLabel.h"
#include "shell/controls/PlainLabel.h"
#include "shell/controls/ShownText.h"
#include "shell/controls/WholeTextDialog.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

namespace orlenta::shell {

NoticeBar::NoticeBar(QWidget *parent)
    : QWidget(parent), m_actions(new QHBoxLayout), m_icon(new PlainLabel(this)), m_text(new NoticeLabel(this)),
      m_showAll(new QPushButton(QStringLiteral("Show All"), this)), m_dismiss(new QToolButton(this)) {
    setAccessibleName(QStringLiteral("Message"));
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_showAll->setToolTip(QStringLiteral("Show the whole message"));
    Theme::setRole(m_showAll, ButtonRole::Quiet);
    m_dismiss->setIcon(Icon::named(QStringLiteral("close")));
    m_dismiss->setAutoRaise(true);
    m_dismiss->setFocusPolicy(Qt::StrongFocus);
    m_dismiss->setAccessibleName(QStringLiteral("Dismiss message"));
    m_dismiss->setToolTip(tipOf(CommandId::DismissNotice));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_icon);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_showAll);
    layout->addLayout(m_actions);
    layout->addWidget(m_dismiss);
    connect(m_showAll, &QPushButton::clicked, this, &NoticeBar::showWholeMessage);
    connect(m_dismiss, &QToolButton::clicked, this, &NoticeBar::dismissed);
    applyMeasures();
    hide();
}

void NoticeBar::setMessage(const QString &message, Tone tone, const QList<NoticeAction> &actions) {
    m_message = message;
    m_tone = tone;
    setActions(actions);
    applyMeasures();
    const QString part = shownPart(message, shownNotice);
    const QString start = shownStart(message, shownNotice);
    m_showAll->setVisible(!part.isEmpty());
    m_text->setNotice(QString(), part.isEmpty() ? start : QStringLiteral("%1 (%2)").arg(start, part));
    setVisible(!message.isEmpty());
}

void NoticeBar::showWholeMessage() {
    (new WholeTextDialog(QStringLiteral("Message"), m_message, WholeTextDialog::Use::Read, this))->open();
}

void NoticeBar::setActions(const QList<NoticeAction> &actions) {
    // This may run inside the click of one of them.
    for (QPushButton *button : std::exchange(m_buttons, {})) {
        button->hide();
        button->deleteLater();
    }
    for (const NoticeAction &action : actions) {
        auto *button = new QPushButton(action.text, this);
        button->setToolTip(action.tip);
        connect(button, &QPushButton::clicked, this, [run = action.run] { run(); });
        m_actions->addWidget(button);
        // In a visible bar, the layout would show it only after the next event.
        button->show();
        m_buttons.append(button);
    }
}

void NoticeBar::keyPressEvent(QKeyEvent *event) {
    if (event->key() == Qt::Key_Escape)
        Q_EMIT dismissed();
    else
        QWidget::keyPressEvent(event);
}

void NoticeBar::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() != nullptr && (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange))
        applyMeasures();
}

void NoticeBar::applyMeasures() {
    const int unit = Theme::unit(this);
    layout()->setContentsMargins(unit * 4, unit * 2, unit * 3, unit * 2);
    layout()->setSpacing(unit * 2);
    const QSize side(Theme::iconSize(this), Theme::iconSize(this));
    const bool isWarning = m_tone == Tone::Warning;
    const QIcon icon = isWarning ? Icon::named(QStringLiteral("warning"), Icon::Tint::Danger)
                                 : Icon::named(QStringLiteral("info"), Icon::Tint::Accent);
    m_icon->setPixmap(icon.pixmap(side, devicePixelRatioF()));
    m_icon->setAccessibleName(isWarning ? QStringLiteral("Warning") : QStringLiteral("Information"));
    m_actions->setSpacing(unit * 2);
    m_dismiss->setIconSize(side);
}

void NoticeBar::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.fillRect(rect(), colors.surface);
    painter.setPen(colors.border);
    painter.drawLine(rect().topLeft(), rect().topRight());
}

} // namespace orlenta::shell
