#include "shell/windows/PlayingMark.h"

#include <chrono>

#include <QtCore/QEvent>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>

#include "audio/files/AudioDurations.h"
#include "audio/playback/PlaybackController.h"
#include "shell/editor/ScriptEditor.h"
#include "shell/theme/Icon.h"
#include "shell/theme/Theme.h"

using namespace Qt::StringLiterals;

namespace orlenta::shell {
namespace {

using Durations = audio::ScriptLineAudioDurationReader;
using Playback = audio::PlaybackController;

/// Longer sequences are shown without their time, which would take a look at every file.
constexpr qsizetype mostTimedLines = 2000;

QString timeText(double seconds) {
    return Durations::text(Durations::Seconds(seconds));
}

} // namespace

PlayingMark::PlayingMark(const Playback &playback, ScriptEditor &editor, QWidget *parent)
    : QWidget(parent), m_playback(playback), m_editor(editor), m_place(new QPushButton(u"Playing"_s, this)),
      m_follow(new QPushButton(u"Follow"_s, this)) {
    m_place->setToolTip(u"Go to the playing line"_s);
    m_follow->setToolTip(u"Keep the playing line in view"_s);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QPushButton *button : {m_place, m_follow}) {
        Theme::setRole(button, ButtonRole::Quiet);
        layout->addWidget(button);
        connect(button, &QPushButton::clicked, &editor, &ScriptEditor::followPlayback);
    }
    connect(&playback, &Playback::isPlayingSequenceChanged, this, &PlayingMark::readLengths);
    connect(&playback, &Playback::currentlyPlayingLineIDChanged, this, &PlayingMark::readLengths);
    connect(&playback, &Playback::playbackProgressChanged, this, &PlayingMark::showPlace);
    connect(&editor, &ScriptEditor::isFollowingChanged, this, &PlayingMark::showFollowing);
    applyMeasures();
    readLengths();
    showFollowing();
}

void PlayingMark::readLengths() {
    const bool isPlaying = m_playback.isPlayingSequence();
    setVisible(isPlaying);
    if (!isPlaying)
        return;
    const Playback::Sequence &sequence = *m_playback.sequence();
    bool isComplete = sequence.lines.size() <= mostTimedLines;
    m_before = 0.0;
    m_current = 0.0;
    m_total = 0.0;
    for (qsizetype index = 0; isComplete && index < sequence.lines.size(); ++index) {
        // Ask for one after the other, so that each answer costs one look at the rest.
        const auto length =
            Durations::duration(sequence.lines.at(index).url, u"PlayingMark"_s, this, [this] { readLengths(); });
        isComplete = isComplete && length;
        const double seconds = length ? length->count() : 0.0;
        m_total += seconds;
        if (index < sequence.index)
            m_before += seconds;
        if (index == sequence.index)
            m_current = seconds;
    }
    if (!isComplete)
        m_total = 0.0;
    showPlace();
}

void PlayingMark::showPlace() {
    if (!m_playback.isPlayingSequence())
        return;
    const Playback::Sequence &sequence = *m_playback.sequence();
    QString text = u"Playing %1 of %2"_s.arg(sequence.index + 1).arg(sequence.lines.size());
    // The time is only told once it is known for every line.
    if (m_total > 0.0)
        text += u" · %1 of %2"_s.arg(timeText(m_before + m_current * m_playback.playbackProgress()), timeText(m_total));
    if (m_place->text() != text)
        m_place->setText(text);
}

void PlayingMark::showFollowing() {
    m_follow->setVisible(!m_editor.isFollowing());
}

void PlayingMark::applyMeasures() {
    const int icon = Theme::iconSize(this);
    layout()->setSpacing(Theme::unit(this));
    m_place->setIcon(Icon::named(u"play"_s, Icon::Tint::Accent));
    m_place->setIconSize({icon, icon});
}

void PlayingMark::changeEvent(QEvent *event) {
    QWidget::changeEvent(event);
    if (layout() != nullptr && (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange))
        applyMeasures();
}

} // namespace orlenta::shell
