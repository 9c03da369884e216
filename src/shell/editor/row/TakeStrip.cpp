#include "shell/editor/row/TakeStrip.h"

#include <QtCore/QEvent>
#include <QtGui/QPainter>
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

void TakeStrip::setDensity(RowDensity density) {
    if (std::exchange(m_density, density) == density)
        return;
    m_player->setDensity(density);
    applyMeasures();
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
    const bool isCompact = m_density == RowDensity::Compact;
    m_takes->setText(!isCompact             ? text
                     : m_content.active < 0 ? u"-/%1"_s.arg(m_content.count)
                                            : u"%1/%2"_s.arg(m_content.active + 1).arg(m_content.count));
    update();
    m_takes->setAccessibleName(u"Take of line %1, %2"_s.arg(QString::number(m_number), text));
}

void TakeStrip::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        applyMeasures();
}

void TakeStrip::applyMeasures() {
    const int icon = Theme::iconSize(this) * 3 / 4;
    const bool isCompact = m_density == RowDensity::Compact;
    layout()->setSpacing(Theme::unit(this) * (isCompact ? 1 : 2));
    m_takes->setToolButtonStyle(isCompact ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextBesideIcon);
    // As wide in each row, so that the lanes beside it are, too.
    const int words = m_takes->fontMetrics().horizontalAdvance(isCompact ? u"00/00"_s : u"Take 10 of 10"_s);
    m_takes->setMinimumWidth(words + Theme::unit(this) * 2 + (isCompact ? 0 : icon + Theme::unit(this) * 2));
    m_takes->setIcon(Icon::named(u"chevron-down"_s, Icon::Tint::Muted));
    m_takes->setIconSize({icon, icon});
}

void TakeStrip::paintEvent(QPaintEvent *) {
    if (m_content.active < 0 || m_content.audio)
        return;
    // The take's file is missing: its lane is hatched.
    const int unit = Theme::unit(this);
    QRect lane(unit, 0, m_takes->x() - unit * 3, unit * 3);
    lane.moveTop((height() - lane.height()) / 2);
    QPainter painter(this);
    painter.fillRect(lane, QBrush(ThemeColors::of(palette()).borderControl, Qt::BDiagPattern));
}

} // namespace orlenta::shell
