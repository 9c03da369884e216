#include "shell/editor/row/DirectionStrip.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/controls/NoticeLabel.h"
#include "shell/controls/PlainLabel.h"
#include "shell/editor/row/AudioPlayer.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {

DirectionStrip::DirectionStrip(QWidget *parent) : QWidget(parent) {
    makeControls();
    layOut();
    applyMeasures();
    const auto asks = [this](QAbstractButton *button, CommandId command) {
        connect(button, &QAbstractButton::clicked, this, [this, command] { Q_EMIT commandRequested(command); });
    };
    asks(m_record, CommandId::Record);
    asks(m_import, CommandId::ImportDirection);
    asks(m_delete, CommandId::DeleteDirection);
    connect(m_player, &AudioPlayer::commandRequested, this, &DirectionStrip::commandRequested);
    showRecording();
}

void DirectionStrip::makeControls() {
    m_icon = new PlainLabel(this);
    m_icon->setAccessibleName(u"Direction"_s);
    m_icon->setToolTip(u"Direction"_s);
    m_title = new PlainLabel(u"Direction"_s, this);
    m_player = new AudioPlayer(controller::AudioKind::SourceRecording, this);
    m_record = new QPushButton(this);
    m_recordingTime = new PlainLabel(this);
    m_import = new QPushButton(this);
    m_import->setToolTip(tipOf(CommandId::ImportDirection));
    m_hint = new PlainLabel(this);
    m_delete = new QToolButton(this);
    m_delete->setAutoRaise(true);
    m_delete->setToolTip(tipOf(CommandId::DeleteDirection));
    m_error = new NoticeLabel(this);
    m_error->hide();
}

void DirectionStrip::layOut() {
    auto *row = new QHBoxLayout;
    row->addWidget(m_icon);
    row->addWidget(m_title);
    row->addWidget(m_player, 1);
    row->addWidget(m_record);
    row->addWidget(m_recordingTime);
    row->addWidget(m_import);
    row->addWidget(m_hint, 1);
    row->addWidget(m_delete);
    // Keeps the controls on the left if none of them stretches.
    row->addStretch();
    auto *column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(m_error);
}

QList<QWidget *> DirectionStrip::controls() const {
    return m_player->controls() << m_record << m_import << m_delete;
}

int DirectionStrip::heightForWidth(int width) const {
    // The height depends on the width only if there is a message.
    return layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : layout()->totalSizeHint().height();
}

void DirectionStrip::setContent(qsizetype number, const DirectionContent &content) {
    if (m_number == number && m_content == content)
        return;
    m_number = number;
    m_content = content;
    showRecording();
    showRecordingNames();
    showNames();
}

void DirectionStrip::showRecording() {
    const bool isRecording = m_content.isRecording;
    const bool hasAudio = m_content.audio.has_value();
    // If there is a take, its waveform needs the room of the button texts.
    const bool hasWords = isRecording || !hasAudio;
    m_record->setText(!hasWords ? QString() : isRecording ? u"Stop"_s : u"Record"_s);
    m_record->setIcon(Icon::named(isRecording ? u"stop"_s : u"record"_s, Icon::Tint::Danger));
    m_record->setToolTip(isRecording ? tipWithKey(u"Stop recording"_s, CommandId::Record)
                         : hasAudio  ? tipWithKey(u"Record the direction again"_s, CommandId::Record)
                                     : tipOf(CommandId::Record));
    m_import->setText(hasWords ? u"Import..."_s : QString());
    for (QPushButton *button : {m_record, m_import})
        Theme::setRole(button, hasWords ? ButtonRole::Normal : ButtonRole::Quiet);
    m_icon->setPixmap(Icon::named(u"microphone"_s, isRecording ? Icon::Tint::Danger : Icon::Tint::Muted)
                          .pixmap(QSize(Theme::iconSize(this), Theme::iconSize(this)), devicePixelRatioF()));
    m_player->setContent(m_number, isRecording ? std::nullopt : m_content.audio);
    m_delete->setVisible(hasAudio && !isRecording);
    m_recordingTime->setVisible(isRecording);
    m_import->setVisible(!isRecording);
    m_hint->setText(isRecording ? u"Recording"_s : u"or drop an audio file here"_s);
    fitWords();
}

// Screen readers need the context: "0:04" alone tells nothing.
void DirectionStrip::showRecordingNames() {
    const QString line = u"line %1"_s.arg(m_number);
    m_recordingTime->setText(m_content.recordingTime);
    m_recordingTime->setAccessibleName(QStringLiteral("Recording time of %1, %2").arg(line, m_content.recordingTime));
    m_error->setNotice(QStringLiteral("Recording problem on %1").arg(line), m_content.error);
    m_error->setVisible(!m_content.error.isEmpty());
}

void DirectionStrip::showNames() {
    const QString line = u"line %1"_s.arg(m_number);
    const auto name = [&line](QWidget *widget, const QString &words) { widget->setAccessibleName(words.arg(line)); };
    name(this, u"Direction for %1"_s);
    name(m_record, m_content.isRecording ? u"Stop recording direction for %1"_s : u"Record direction for %1"_s);
    name(m_import, u"Import direction audio for %1"_s);
    name(m_delete, u"Delete direction audio for %1"_s);
}

void DirectionStrip::applyMeasures() {
    const int unit = Theme::unit(this);
    const ThemeColors &colors = ThemeColors::of(palette());
    layout()->setContentsMargins(unit * 2, unit, unit, unit);
    layout()->setSpacing(unit);
    layout()->itemAt(0)->layout()->setSpacing(unit * 2);
    const int icon = Theme::iconSize(this);
    for (QAbstractButton *button : {static_cast<QAbstractButton *>(m_record), static_cast<QAbstractButton *>(m_import),
                                    static_cast<QAbstractButton *>(m_delete)})
        button->setIconSize({icon, icon});
    m_import->setIcon(Icon::named(u"import"_s));
    m_delete->setIcon(Icon::named(u"trash"_s, Icon::Tint::Muted));
    m_player->setColor(colors.textMuted, colors.field);
    for (QLabel *label : {m_title, m_hint}) {
        QPalette muted = palette();
        muted.setColor(QPalette::WindowText, colors.textMuted);
        label->setPalette(muted);
    }
    QPalette danger = palette();
    danger.setColor(QPalette::WindowText, readableOn(colors.field, colors.danger));
    m_recordingTime->setPalette(danger);
    m_error->setPalette(danger);
    QFont strong = font();
    strong.setWeight(QFont::DemiBold);
    m_recordingTime->setFont(strong);
}

void DirectionStrip::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() == nullptr || (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange))
        return;
    applyMeasures();
    showRecording();
}

void DirectionStrip::resizeEvent(QResizeEvent *event) {
    QWidget::resizeEvent(event);
    fitWords();
}

void DirectionStrip::fitWords() {
    // Show only the icons if the controls need the room.
    const int units = width() / Theme::unit(this);
    const bool isEmpty = !m_content.audio && !m_content.isRecording;
    m_title->setVisible(units >= (isEmpty ? 74 : 95));
    m_hint->setVisible(m_content.isRecording || (isEmpty && units >= 118));
}

void DirectionStrip::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = ThemeColors::of(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors.border);
    painter.setBrush(colors.field);
    const qreal radius = Theme::radius(this);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
}

} // namespace orlenta::shell
