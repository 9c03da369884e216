#include "shell/editor/row/TakeStrip.h"

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QToolButton>

#include "shell/editor/row/AudioPlayer.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

TakeStrip::TakeStrip(QWidget *parent)
    : QWidget(parent), m_player(new AudioPlayer(controller::AudioKind::Generated, this)),
      m_takes(new QToolButton(this)) {
    m_takes->setAutoRaise(true);
    m_takes->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_takes->setToolTip(u"Choose a take (Return)"_s);
    // Puts the menu arrow after the text.
    m_takes->setLayoutDirection(layoutDirection() == Qt::LeftToRight ? Qt::RightToLeft : Qt::LeftToRight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_player, 1);
    row->addStretch();
    row->addWidget(m_takes);
    applyMeasures();
    connect(m_takes, &QToolButton::clicked, this,
            [this] { Q_EMIT menuRequested(m_takes->mapToGlobal(QPoint(0, m_takes->height()))); });
    hide();
}

QList<QWidget *> TakeStrip::controls() const {
    return m_player->controls() << m_takes;
}

void TakeStrip::setContent(qsizetype number, const TakesContent &content) {
    setVisible(content.audio || content.count > 0);
    if (number == m_number && content == m_content)
        return;
    m_number = number;
    m_content = content;
    m_player->setContent(number, content.audio);
    showTakes();
}

void TakeStrip::showTakes() {
    m_takes->setVisible(m_content.count > 0);
    QString text = u"Choose Take"_s;
    if (m_content.active >= 0) {
        text = u"Take %1"_s.arg(m_content.active + 1);
        if (m_content.count > 1)
            text = u"%1 of %2"_s.arg(text).arg(m_content.count);
        if (!m_content.audio)
            text = u"%1, file missing"_s.arg(text);
    }
    m_takes->setText(text);
    m_takes->setAccessibleName(u"Take of line %1, %2"_s.arg(QString::number(m_number), text));
}

void TakeStrip::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        applyMeasures();
}

void TakeStrip::applyMeasures() {
    const int icon = Theme::iconSize(this) * 3 / 4;
    layout()->setSpacing(Theme::unit(this));
    m_takes->setIcon(Icon::named(u"chevron-down"_s, Icon::Tint::Muted));
    m_takes->setIconSize({icon, icon});
}

} // namespace orlenta::shell
