#include "shell/editor/row/LineHeader.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/editor/row/BusyIndicator.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

LineHeader::LineHeader(QWidget *parent)
    : QWidget(parent), m_mode(new QToolButton(this)), m_notes(new QToolButton(this)), m_generate(new QPushButton(this)),
      m_busy(new BusyIndicator(this)), m_hint(new QLabel(this)) {
    m_hint->setWordWrap(true);
    m_notes->setToolTip(tipOf(CommandId::EditNotes));
    for (QToolButton *button : {m_mode, m_notes})
        button->setAutoRaise(true);
    const auto asks = [this](QAbstractButton *button, CommandId command) {
        connect(button, &QAbstractButton::clicked, this, [this, command] { Q_EMIT commandRequested(command); });
    };
    asks(m_mode, CommandId::SwitchDirectionMode);
    asks(m_notes, CommandId::EditNotes);
    asks(m_generate, CommandId::Generate);
    applyMeasures();
    showGeneration();
    showDirection();
}

QList<QWidget *> LineHeader::controls() const {
    return {m_mode, m_notes, m_generate};
}

void LineHeader::setContent(qsizetype number, const LineHeaderContent &content) {
    if (number == m_number && content == m_content)
        return;
    m_number = number;
    m_content = content;
    showGeneration();
    showDirection();
    showNames();
    layOut();
    update();
}

void LineHeader::setBackground(const QColor &background) {
    if (std::exchange(m_background, background) == background)
        return;
    showHint();
    update();
}

void LineHeader::showGeneration() {
    const bool isGenerating = m_content.generation == RowGeneration::Generating;
    const bool isWaiting = m_content.generation == RowGeneration::Waiting;
    const bool isFirst = !m_content.isSpoken;
    showHint();
    m_generate->setVisible(m_content.generation != RowGeneration::NoVoice);
    m_busy->setVisible(isGenerating);
    m_generate->setText(isGenerating ? u"Generating..."_s
                        : isWaiting  ? u"Waiting…"_s
                        : isFirst    ? u"Generate"_s
                                     : u"Regenerate"_s);
    m_generate->setAccessibleDescription(m_generate->text());
    m_generate->setEnabled(!isGenerating && !isWaiting);
    Theme::setRole(m_generate, isFirst ? ButtonRole::Normal : ButtonRole::Quiet);
    m_generate->setIcon(isGenerating ? QIcon() : Icon::named(isFirst ? u"waveform"_s : u"arrow-clockwise"_s));
    m_generate->setToolTip(
        tipWithKey(isFirst ? u"Speak this line"_s : u"Speak this line again, as a new take"_s, CommandId::Generate));
}

void LineHeader::showHint() {
    const bool hasVoice = m_content.generation != RowGeneration::NoVoice;
    m_hint->setText(hasVoice ? m_content.overrun : u"Select a voice in the inspector to generate"_s);
    m_hint->setVisible(!m_hint->text().isEmpty());
    const ThemeColors &colors = ThemeColors::of(palette());
    QPalette hint = palette();
    hint.setColor(QPalette::WindowText, hasVoice ? readableOn(m_background, colors.danger) : colors.textMuted);
    m_hint->setPalette(hint);
}

void LineHeader::showDirection() {
    const bool isVoice = m_content.isVoiceDirected;
    m_mode->setIcon(Icon::named(u"microphone"_s, isVoice ? Icon::Tint::Accent : Icon::Tint::Muted));
    m_mode->setToolTip(
        tipWithKey(isVoice ? u"Directed by voice; switch to text"_s : u"Directed by text; switch to voice"_s,
                   CommandId::SwitchDirectionMode));
    m_mode->setAccessibleDescription(isVoice ? u"Voice"_s : u"Text"_s);
    m_notes->setIcon(Icon::named(u"note"_s, m_content.hasNotes ? Icon::Tint::Accent : Icon::Tint::Muted));
}

void LineHeader::showNames() {
    const QString line = u"line %1"_s.arg(m_number);
    m_generate->setAccessibleName(u"Generate %1"_s.arg(line));
    m_mode->setAccessibleName(u"Direction mode of %1"_s.arg(line));
    m_notes->setAccessibleName(u"Edit notes of %1"_s.arg(line));
}

QFont LineHeader::nameFont() const {
    QFont name = font();
    name.setWeight(QFont::DemiBold);
    return name;
}

LineHeader::Places LineHeader::placesFor(int width) const {
    const int unit = Theme::unit(this);
    const QFontMetrics names(nameFont());
    const QSize action = m_generate->sizeHint();
    const QSize bare = m_mode->sizeHint();
    Places places;
    places.height = std::max({action.height(), bare.height(), names.height()});
    int right = width;
    const auto fromRight = [&](const QSize &size, int gap) {
        const QRect place(right - size.width(), (places.height - size.height()) / 2, size.width(), size.height());
        right = place.left() - gap;
        return place;
    };
    const int numberWidth = std::max(names.horizontalAdvance(QString::number(m_number)) + unit * 2, unit * 6);
    places.number = QRect(0, 0, numberWidth, places.height);
    if (m_content.generation != RowGeneration::NoVoice)
        places.generate = fromRight(action, unit);
    places.notes = fromRight(bare, 0);
    places.mode = fromRight(bare, unit * 2);
    if (m_content.generation == RowGeneration::Generating)
        places.busy = fromRight(m_busy->sizeHint(), unit * 2);
    bool hintBelow = false;
    if (!m_hint->text().isEmpty()) {
        const int wanted = m_hint->fontMetrics().horizontalAdvance(m_hint->text()) + unit;
        hintBelow = wanted > right - numberWidth - unit * 20;
        if (!hintBelow)
            places.hint = fromRight(QSize(wanted, places.height), unit * 2);
    }
    places.name = QRect(numberWidth, 0, std::max(0, right - numberWidth), places.height);
    if (hintBelow) {
        places.hint = QRect(0, places.height + unit, width, m_hint->heightForWidth(width));
        places.height = places.hint.bottom() + 1;
    }
    return places;
}

void LineHeader::layOut() {
    m_places = placesFor(width());
    m_mode->setGeometry(m_places.mode);
    m_notes->setGeometry(m_places.notes);
    m_generate->setGeometry(m_places.generate);
    m_busy->setGeometry(m_places.busy);
    m_hint->setGeometry(m_places.hint);
}

void LineHeader::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    layOut();
}

void LineHeader::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    applyMeasures();
    layOut();
}

void LineHeader::applyMeasures() {
    showHint();
    const int icon = Theme::iconSize(this);
    for (QAbstractButton *button : {static_cast<QAbstractButton *>(m_mode), static_cast<QAbstractButton *>(m_notes),
                                    static_cast<QAbstractButton *>(m_generate)})
        button->setIconSize({icon, icon});
}

void LineHeader::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.setFont(nameFont());
    painter.setPen(colors.textMuted);
    painter.drawText(m_places.number, Qt::AlignVCenter | Qt::AlignLeft, QString::number(m_number));
    painter.setPen(m_content.stripe.isValid() ? readableOn(m_background, m_content.stripe) : colors.textMuted);
    const QString name = m_content.castName.isEmpty() ? u"No voice"_s : m_content.castName;
    painter.drawText(m_places.name, Qt::AlignVCenter | Qt::AlignLeft,
                     painter.fontMetrics().elidedText(name, Qt::ElideRight, m_places.name.width()));
}

} // namespace orlenta::shell
