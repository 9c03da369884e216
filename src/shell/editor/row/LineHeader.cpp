#include "shell/editor/row/LineHeader.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/controls/PlainLabel.h"
#include "shell/controls/ShownText.h"
#include "shell/editor/row/RowPlaces.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

// In units. The number's field is a square; a compact name needs some room to be worth cutting.
constexpr int numberSide = 6;
constexpr int shortestName = 10;

} // namespace

LineHeader::LineHeader(QWidget *parent)
    : QWidget(parent), m_mode(new QToolButton(this)), m_notes(new QToolButton(this)), m_generate(new QPushButton(this)),
      m_hint(new PlainLabel(this)) {
    m_hint->setWordWrap(true);
    Theme::setRole(m_generate, ButtonRole::Quiet);
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
    showButtons();
}

QString LineHeader::voiceHint() {
    return u"Select a voice in the inspector to generate"_s;
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
    showButtons();
    showNames();
    layOut();
    update();
}

void LineHeader::setDensity(RowDensity density) {
    if (std::exchange(m_density, density) == density)
        return;
    showButtons();
    layOut();
    update();
}

void LineHeader::setActive(bool isActive) {
    if (std::exchange(m_isActive, isActive) == isActive)
        return;
    showButtons();
    layOut();
}

void LineHeader::showButtons() {
    const bool hasRoom = m_density == RowDensity::Comfortable;
    const bool hasVoice = m_content.generation != RowGeneration::NoVoice;
    m_hint->setVisible(hasRoom && !m_hint->text().isEmpty());
    m_generate->setVisible(hasRoom && hasVoice);
    // A focused button stays, since hiding it would move the focus.
    m_mode->setVisible(hasRoom && (m_isActive || m_content.isVoiceDirected || m_mode->hasFocus()));
    m_notes->setVisible(hasRoom && (m_isActive || m_content.hasNotes || m_notes->hasFocus()));
    const QString word = m_content.generation == RowGeneration::Generating ? u"Generating..."_s
                         : m_content.generation == RowGeneration::Waiting  ? u"Waiting…"_s
                         : m_content.isSpoken                              ? u"Regenerate"_s
                                                                           : u"Generate"_s;
    // Finished work keeps quiet: the word stands where something is missing, and where the user is.
    const bool needsWord = m_isActive || word != u"Regenerate"_s;
    m_generate->setText(needsWord ? word : QString());
    m_generate->setAccessibleDescription(word);
}

void LineHeader::setBackground(const QColor &background) {
    if (std::exchange(m_background, background) == background)
        return;
    showHint();
    update();
}

void LineHeader::showGeneration() {
    const bool isGenerating = m_content.generation == RowGeneration::Generating;
    const bool isFirst = !m_content.isSpoken;
    showHint();
    m_generate->setEnabled(!isGenerating && m_content.generation != RowGeneration::Waiting);
    m_generate->setIcon(isGenerating ? QIcon()
                        : isFirst    ? Icon::named(u"waveform"_s, Icon::Tint::Accent)
                                     : Icon::named(u"arrow-clockwise"_s, Icon::Tint::Muted));
    m_generate->setToolTip(
        tipWithKey(isFirst ? u"Speak this line"_s : u"Speak this line again, as a new take"_s, CommandId::Generate));
}

void LineHeader::showHint() {
    const bool hasVoice = m_content.generation != RowGeneration::NoVoice;
    m_hint->setText(hasVoice ? m_content.overrun : voiceHint());
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
    m_generate->setAccessibleName((m_content.isSpoken ? u"Regenerate %1"_s : u"Generate %1"_s).arg(line));
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
    Places places;
    if (m_density == RowDensity::Compact)
        places.height = RowPlaces::compactHeight * unit;
    else
        places.height = std::max({numberSide * unit, m_generate->sizeHint().height(), m_mode->sizeHint().height()});
    int right = width;
    const auto fromRight = [&](const QWidget *button, int gap) {
        if (button->isHidden())
            return QRect();
        const QSize size = button->sizeHint();
        const QRect place(right - size.width(), (places.height - size.height()) / 2, size.width(), size.height());
        right = place.left() - gap;
        return place;
    };
    const int numberWidth =
        std::max(names.horizontalAdvance(QString::number(m_number)) + unit * 2, unit * (numberSide + 1));
    places.number = QRect(0, 0, numberWidth, places.height);
    places.generate = fromRight(m_generate, unit);
    places.notes = fromRight(m_notes, 0);
    places.mode = fromRight(m_mode, unit);
    bool hintBelow = false;
    if (!m_hint->isHidden()) {
        const int wanted = m_hint->fontMetrics().horizontalAdvance(m_hint->text()) + unit;
        hintBelow = wanted > right - numberWidth - unit * 20;
        if (!hintBelow) {
            places.hint = QRect(right - wanted, 0, wanted, places.height);
            right -= wanted + unit * 2;
        }
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
    // A disabled button reports that the line is waiting or being generated, so it must stay readable.
    QPalette readable;
    readable.setColor(QPalette::Disabled, QPalette::ButtonText, ThemeColors::of(palette()).textMuted);
    m_generate->setPalette(readable);
    const int icon = Theme::iconSize(this);
    for (QAbstractButton *button : {static_cast<QAbstractButton *>(m_mode), static_cast<QAbstractButton *>(m_notes),
                                    static_cast<QAbstractButton *>(m_generate)})
        button->setIconSize({icon, icon});
}

void LineHeader::paintNumber(QPainter &painter) const {
    const ThemeColors &colors = ThemeColors::of(palette());
    if (!m_content.isPlaying && !m_content.isRecording) {
        painter.setPen(colors.textMuted);
        painter.drawText(m_places.number, Qt::AlignVCenter | Qt::AlignLeft, QString::number(m_number));
        return;
    }
    const int unit = Theme::unit(this);
    QRect field(0, 0, numberSide * unit, std::min(numberSide * unit, m_places.number.height() - unit));
    field.moveTop((m_places.number.height() - field.height()) / 2);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_content.isRecording ? colors.danger : colors.accent);
    painter.drawRoundedRect(field, Theme::radius(this), Theme::radius(this));
    painter.restore();
    const int side = Theme::iconSize(this);
    QRect icon(0, 0, side, side);
    icon.moveCenter(field.center());
    Icon::named(m_content.isRecording ? u"record"_s : u"play"_s, Icon::Tint::OnAccent).paint(&painter, icon);
}

void LineHeader::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.setFont(nameFont());
    paintNumber(painter);
    painter.setPen(m_content.stripe.isValid() ? readableOn(m_background, m_content.stripe) : colors.textMuted);
    const QString name = m_content.castName.isEmpty() ? u"No voice"_s : shownName(m_content.castName);
    const bool isCut = m_density == RowDensity::Compact && m_places.name.width() < shortestName * Theme::unit(this);
    painter.drawText(m_places.name, Qt::AlignVCenter | Qt::AlignLeft,
                     isCut ? name.left(1)
                           : painter.fontMetrics().elidedText(name, Qt::ElideRight, m_places.name.width()));
}

} // namespace orlenta::shell
