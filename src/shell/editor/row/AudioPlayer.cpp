#include "shell/editor/row/AudioPlayer.h"

#include <algorithm>

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QToolButton>

#include "shell/controls/PlainLabel.h"
#include "shell/editor/row/TakeLane.h"
#include "shell/editor/row/WaveformBarsView.h"
#include "shell/menus/CommandActions.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using controller::AudioKind;

// An even, quiet ripple, shown until the peaks have been extracted.
const QList<qreal> &placeholderBars(AudioKind kind) {
    static const QList<qreal> generated{4, 6, 9, 7, 5, 8, 11, 8, 5, 7, 10, 6};
    static const QList<qreal> direction{3, 5, 7, 5, 4, 6, 8, 6, 4, 5, 7, 5};
    return kind == AudioKind::Generated ? generated : direction;
}

CommandId playCommand(AudioKind kind) {
    return kind == AudioKind::Generated ? CommandId::PlaySelection : CommandId::PlayDirection;
}

} // namespace

AudioPlayer::AudioPlayer(AudioKind kind, QWidget *parent)
    : QWidget(parent), m_kind(kind), m_play(new QToolButton(this)), m_lane(new TakeLane(this)),
      m_waveform(&m_lane->waveform()), m_duration(new PlainLabel(this)) {
    const bool isGenerated = kind == AudioKind::Generated;
    m_play->setAutoRaise(true);
    m_waveform->setFallbackHeights(placeholderBars(kind));
    m_lane->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    m_waveform->setToolTip(
        isGenerated ? u"Click to play from here (Left, Right, Home, End to move; Space to play)"_s
                    : u"Click to play the direction from here (Left, Right, Home, End to move; Space to play)"_s);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_play);
    row->addWidget(m_lane, 1);
    row->addWidget(m_duration);
    applyMeasures();
    const auto play = [this] { Q_EMIT commandRequested(playCommand(m_kind)); };
    connect(m_play, &QToolButton::clicked, this, play);
    connect(m_waveform, &WaveformBarsView::playRequested, this, play);
    connect(m_waveform, &WaveformBarsView::seekRequested, this,
            [this](double fraction) { Q_EMIT seekRequested(m_kind, fraction); });
    hide();
}

QList<QWidget *> AudioPlayer::controls() const {
    return {m_play, m_waveform};
}

void AudioPlayer::setContent(qsizetype number, const std::optional<AudioContent> &content) {
    setVisible(content.has_value());
    const AudioContent shown = content.value_or(AudioContent());
    if (number == m_number && shown == m_content)
        return;
    m_number = number;
    m_content = shown;
    m_waveform->setSamples(m_content.waveform);
    m_lane->setTimes(m_content.seconds, m_content.laneSeconds);
    m_duration->setText(m_content.duration);
    showPlayback();
    showNames();
}

void AudioPlayer::setDensity(RowDensity density) {
    if (std::exchange(m_density, density) != density)
        applyMeasures();
}

void AudioPlayer::setProgress(double progress) {
    if (m_content.playback == RowPlayback::Idle)
        return;
    m_content.progress = progress;
    m_waveform->setProgress(progress, m_content.playback);
}

void AudioPlayer::setColor(const QColor &color, const QColor &background) {
    m_waveform->setColor(color, background);
}

void AudioPlayer::showPlayback() {
    const bool isPlaying = m_content.playback == RowPlayback::Playing;
    const bool isIdle = m_content.playback == RowPlayback::Idle;
    const CommandId command = playCommand(m_kind);
    const Icon::Tint tint = m_kind == AudioKind::Generated ? Icon::Tint::Accent : Icon::Tint::Text;
    m_play->setIcon(Icon::named(isPlaying ? u"stop"_s : u"play"_s, tint));
    m_play->setToolTip(tipWithKey(isPlaying                        ? u"Stop"_s
                                  : m_kind == AudioKind::Generated ? u"Play this line"_s
                                                                   : u"Play the direction"_s,
                                  command));
    m_waveform->setShowsProgress(!isIdle);
    m_waveform->setProgress(isIdle ? 0.0 : m_content.progress, m_content.playback);
}

// Screen readers need the context: "0:04" alone tells nothing.
void AudioPlayer::showNames() {
    const QString line = QString::number(m_number);
    const QString sound =
        m_kind == AudioKind::Generated ? u"line %1"_s.arg(line) : u"the direction of line %1"_s.arg(line);
    const bool isPlaying = m_content.playback == RowPlayback::Playing;
    m_play->setAccessibleName((isPlaying ? u"Stop %1"_s : u"Play %1"_s).arg(sound));
    m_waveform->setAccessibleName(u"Playhead of %1"_s.arg(sound));
    // The label rounds down to whole seconds.
    const QString &exact = m_content.exactDuration;
    m_duration->setAccessibleName(u"Duration of %1, %2"_s.arg(sound, exact.isEmpty() ? m_content.duration : exact));
    m_duration->setToolTip(exact);
}

void AudioPlayer::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange)
        return;
    applyMeasures();
    showPlayback();
}

void AudioPlayer::applyMeasures() {
    const bool isCompact = m_density == RowDensity::Compact;
    const int unit = Theme::unit(this);
    const int icon = Theme::iconSize(this);
    layout()->setSpacing(isCompact ? unit : unit * 2);
    m_play->setIconSize({icon, icon});
    m_waveform->setMaxBarHeight(unit * (isCompact ? 4.0 : 5.0));
    m_waveform->setBars(std::max(1.5, unit / 2.0), std::max(1.0, unit * 0.375));
    m_lane->setMinimumSize(unit * 8, m_lane->sizeHint().height());
    m_duration->setMinimumWidth(m_duration->fontMetrics().horizontalAdvance(u"00:00"_s) + unit);
    m_duration->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QPalette muted = palette();
    muted.setColor(QPalette::WindowText, ThemeColors::of(palette()).textMuted);
    m_duration->setPalette(muted);
}

} // namespace orlenta::shell
