#include "shell/editor/DirectionStrip.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolButton>

#include "shell/editor/NoticeLabel.h"
#include "shell/editor/WaveformBarsView.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/StylePainting.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

// Shown until the peaks have been extracted.
const QList<qreal> &quietBars() {
    static const QList<qreal> heights{3, 5, 7, 5, 4, 6, 8, 6, 4, 5, 7, 5};
    return heights;
}

} // namespace

DirectionStrip::DirectionStrip(QWidget *parent) : QWidget(parent) {
    makeControls();
    layOut();
    applyMeasures();
    const auto wish = [this](CommandId what) { return [this, what] { Q_EMIT wished(what); }; };
    connect(m_record, &QPushButton::clicked, this, wish(CommandId::Record));
    connect(m_play, &QToolButton::clicked, this, wish(CommandId::PlayDirection));
    connect(m_import, &QPushButton::clicked, this, wish(CommandId::ImportDirection));
    connect(m_delete, &QToolButton::clicked, this, wish(CommandId::DeleteDirection));
    connect(m_waveform, &WaveformBarsView::seekRequested, this, &DirectionStrip::seekRequested);
    showRecording();
    showAudio();
}

void DirectionStrip::makeControls() {
    m_icon = new QLabel(this);
    m_icon->setAccessibleName(u"Direction"_s);
    m_icon->setToolTip(u"Direction"_s);
    m_title = new QLabel(u"Direction"_s, this);
    m_play = new QToolButton(this);
    m_play->setAutoRaise(true);
    m_waveform = new WaveformBarsView(this);
    m_waveform->setFallbackHeights(quietBars());
    m_waveform->setToolTip(u"Click to play the direction from here (Left, Right, Home, End; Space plays)"_s);
    m_waveform->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_duration = new QLabel(this);
    m_record = new QPushButton(this);
    m_recordingTime = new QLabel(this);
    m_import = new QPushButton(this);
    m_import->setToolTip(tipOf(CommandId::ImportDirection));
    m_hint = new QLabel(this);
    m_delete = new QToolButton(this);
    m_delete->setAutoRaise(true);
    m_delete->setToolTip(tipOf(CommandId::DeleteDirection));
    m_error = new NoticeLabel(this);
    m_error->hide();
}

void DirectionStrip::layOut() {
    auto *row = new QHBoxLayout;
    for (QWidget *widget :
         {static_cast<QWidget *>(m_icon), static_cast<QWidget *>(m_title), static_cast<QWidget *>(m_play)})
        row->addWidget(widget);
    row->addWidget(m_waveform, 1);
    for (QWidget *widget : {static_cast<QWidget *>(m_duration), static_cast<QWidget *>(m_record),
                            static_cast<QWidget *>(m_recordingTime), static_cast<QWidget *>(m_import)})
        row->addWidget(widget);
    row->addWidget(m_hint, 1);
    row->addWidget(m_delete);
    // Keeps the controls together at the left where nothing takes the room.
    row->addStretch();
    auto *column = new QVBoxLayout(this);
    column->addLayout(row);
    column->addWidget(m_error);
}

QList<QWidget *> DirectionStrip::controls() const {
    return {m_play, m_waveform, m_record, m_import, m_delete};
}

int DirectionStrip::heightForWidth(int width) const {
    // Without a message below the controls nothing depends on the width.
    return layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(width) : layout()->totalSizeHint().height();
}

void DirectionStrip::setContent(const DirectionContent &content) {
    if (m_content == content)
        return;
    const DirectionContent before = std::exchange(m_content, content);
    if (before.isRecording != content.isRecording || before.hasAudio != content.hasAudio)
        showRecording();
    if (before.number != content.number || before.isRecording != content.isRecording ||
        before.playback != content.playback)
        showNames();
    if (before.number != content.number || before.recordingTime != content.recordingTime ||
        before.duration != content.duration || before.error != content.error)
        showReadings();
    showAudio();
}

void DirectionStrip::setProgress(double progress) {
    if (m_content.playback == RowPlayback::Idle)
        return;
    m_content.progress = progress;
    m_waveform->setProgress(progress, m_content.playback);
}

void DirectionStrip::showRecording() {
    const bool isRecording = m_content.isRecording;
    const bool hasAudio = m_content.hasAudio;
    // With a take on the line, its waveform needs the room that the words take.
    const bool hasWords = isRecording || !hasAudio;
    m_record->setText(!hasWords ? QString() : isRecording ? u"Stop"_s : u"Record"_s);
    m_record->setIcon(Icon::named(isRecording ? u"stop"_s : u"record"_s, Icon::Tint::Danger));
    m_record->setToolTip(isRecording ? tipWithKey(u"Stop recording"_s, CommandId::Record)
                         : hasAudio  ? tipWithKey(u"Record the direction anew"_s, CommandId::Record)
                                     : tipOf(CommandId::Record));
    m_import->setText(hasWords ? u"Import..."_s : QString());
    for (QPushButton *button : {m_record, m_import})
        Theme::setRole(button, hasWords ? ButtonRole::Normal : ButtonRole::Quiet);
    m_icon->setPixmap(Icon::named(u"microphone"_s, isRecording ? Icon::Tint::Danger : Icon::Tint::Muted)
                          .pixmap(QSize(Theme::iconSize(this), Theme::iconSize(this)), devicePixelRatioF()));
    m_recordingTime->setVisible(isRecording);
    m_import->setVisible(!isRecording);
    m_hint->setText(isRecording ? u"Recording"_s : u"or drop an audio file here"_s);
    fitWords();
}

void DirectionStrip::showAudio() {
    const bool shows = m_content.hasAudio && !m_content.isRecording;
    for (QWidget *widget : {static_cast<QWidget *>(m_play), static_cast<QWidget *>(m_waveform),
                            static_cast<QWidget *>(m_duration), static_cast<QWidget *>(m_delete)})
        widget->setVisible(shows);
    if (!shows)
        return;
    const bool isPlaying = m_content.playback == RowPlayback::Playing;
    m_play->setIcon(Icon::named(isPlaying ? u"stop"_s : u"play"_s));
    m_play->setToolTip(isPlaying ? tipWithKey(u"Stop"_s, CommandId::PlayDirection) : tipOf(CommandId::PlayDirection));
    m_waveform->setSamples(m_content.waveform);
    m_waveform->setShowsProgress(m_content.playback != RowPlayback::Idle);
    m_waveform->setProgress(m_content.playback == RowPlayback::Idle ? 0.0 : m_content.progress, m_content.playback);
}

// What these say is spoken with what they are about: alone, "0:04" tells nothing.
void DirectionStrip::showReadings() {
    const QString line = QStringLiteral("line %1").arg(m_content.number);
    m_recordingTime->setText(m_content.recordingTime);
    m_recordingTime->setAccessibleName(QStringLiteral("Recording time of %1, %2").arg(line, m_content.recordingTime));
    m_duration->setText(m_content.duration);
    m_duration->setAccessibleName(QStringLiteral("Direction duration of %1, %2").arg(line, m_content.duration));
    m_error->setNotice(QStringLiteral("Recording problem of %1").arg(line), m_content.error);
    m_error->setVisible(!m_content.error.isEmpty());
}

void DirectionStrip::showNames() {
    const QString line = QStringLiteral("line %1").arg(m_content.number);
    const auto name = [&line](QWidget *widget, const QString &words) { widget->setAccessibleName(words.arg(line)); };
    name(this, u"Direction of %1"_s);
    name(m_record, m_content.isRecording ? u"Stop recording direction of %1"_s : u"Record direction of %1"_s);
    name(m_play, m_content.playback == RowPlayback::Playing ? u"Stop direction of %1"_s : u"Play direction of %1"_s);
    name(m_waveform, u"Direction playhead of %1"_s);
    name(m_import, u"Import direction audio of %1"_s);
    name(m_delete, u"Delete direction audio of %1"_s);
}

void DirectionStrip::applyMeasures() {
    const int unit = Theme::unit(this);
    const ThemeColors &colors = ThemeColors::of(palette());
    layout()->setContentsMargins(unit * 2, unit, unit, unit);
    layout()->setSpacing(unit);
    layout()->itemAt(0)->layout()->setSpacing(unit * 2);
    const int icon = Theme::iconSize(this);
    for (QAbstractButton *button : {static_cast<QAbstractButton *>(m_play), static_cast<QAbstractButton *>(m_record),
                                    static_cast<QAbstractButton *>(m_import), static_cast<QAbstractButton *>(m_delete)})
        button->setIconSize({icon, icon});
    m_import->setIcon(Icon::named(u"import"_s));
    m_delete->setIcon(Icon::named(u"trash"_s, Icon::Tint::Muted));
    m_waveform->setMaxBarHeight(unit * 5.0);
    m_waveform->setBars(std::max(1.5, unit / 2.0), std::max(1.0, unit * 0.375));
    m_waveform->setColor(colors.textMuted, colors.field);
    m_waveform->setMinimumSize(unit * 8, m_waveform->sizeHint().height());
    for (QLabel *label : {m_title, m_duration, m_hint}) {
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
    // The icons say it, too, where the controls need the room.
    const int units = width() / Theme::unit(this);
    const bool isEmpty = !m_content.hasAudio && !m_content.isRecording;
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
