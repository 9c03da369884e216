#pragma once

#include <QtWidgets/QWidget>

#include "controller/commands/Command.h"
#include "controller/takes/AudioKind.h"
#include "shell/editor/row/LineRowContent.h"

class QLabel;
class QToolButton;

namespace orlenta::shell {

class TakeLane;
class WaveformBarsView;

/// Plays and shows one piece of a line's audio: play button, waveform and duration.
class AudioPlayer final : public QWidget {
    Q_OBJECT
public:
    AudioPlayer(controller::AudioKind kind, QWidget *parent);

    /// `number` is the line's position in its tab. Without audio the player hides.
    void setContent(qsizetype number, const std::optional<AudioContent> &content);
    void setDensity(RowDensity density);
    /// Moves the playhead. `progress` is 0 to 1.
    void setProgress(double progress);
    /// Sets the colour of the waveform and of the background below it.
    void setColor(const QColor &color, const QColor &background);
    /// The focusable controls in tab order.
    [[nodiscard]] QList<QWidget *> controls() const;

Q_SIGNALS:
    void commandRequested(orlenta::controller::CommandId command);
    void seekRequested(orlenta::controller::AudioKind kind, double fraction);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showPlayback();
    void showNames();
    void applyMeasures();

    const controller::AudioKind m_kind;
    qsizetype m_number = 0;
    AudioContent m_content;
    RowDensity m_density = RowDensity::Comfortable;
    QToolButton *m_play;
    TakeLane *m_lane;
    WaveformBarsView *m_waveform;
    QLabel *m_duration;
};

} // namespace orlenta::shell
