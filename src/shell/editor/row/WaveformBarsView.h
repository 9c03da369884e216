#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

#include "shell/editor/row/LineRowContent.h"

namespace orlenta::shell {

/// Shows a line's audio as bars with the played part highlighted. A click, the arrow keys, Page Up, Page Down, Home and
/// End request a seek; Space and Return request playback. Measures are in logical pixels. Assistive technology can
/// always read the position, but changes are announced only at rest and for the user's own seeks.
class WaveformBarsView final : public QWidget {
    Q_OBJECT
public:
    /// How far an arrow key, or Page Up and Page Down, moves the playhead, as a fraction of the audio.
    static constexpr double keyStep = 0.02;
    static constexpr double pageStep = 0.1;

    explicit WaveformBarsView(QWidget *parent = nullptr);

    /// Peaks, 0 to 1. If empty, the fallback heights are shown.
    void setSamples(const QList<float> &samples);
    void setFallbackHeights(const QList<qreal> &heights);
    /// Sets the colour of the played bars and the background. The other bars are as faint as their contrast to the
    /// background allows.
    void setColor(const QColor &color, const QColor &background);
    void setMaxBarHeight(qreal height);
    void setBars(qreal barWidth, qreal barSpacing);
    /// `progress` is 0 to 1. Not announced while playing.
    void setProgress(double progress, RowPlayback playback);
    void setShowsProgress(bool showsProgress);
    /// Requests a seek for the user and announces it. `fraction` is 0 to 1.
    void seek(double fraction);

    [[nodiscard]] double progress() const { return m_progress; }
    /// The progress in percent, as announced.
    [[nodiscard]] int percent() const;
    [[nodiscard]] bool showsProgress() const { return m_showsProgress; }
    [[nodiscard]] int barCount() const;
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void seekRequested(double fraction);
    /// The user pressed Space or Return to play or stop this audio.
    void playRequested();
    /// The position was announced to assistive technology, at rest or after the user's own seek.
    void positionAnnounced(int percent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] qreal barHeight(int bar, int bars) const;
    void announceProgress();

    QList<float> m_samples;
    QList<qreal> m_fallbackHeights;
    QColor m_color;
    QColor m_played;
    QColor m_background;
    qreal m_idleOpacity = 1.0;
    qreal m_restingOpacity = 1.0;
    double m_progress = 0.0;
    int m_announcedPercent = 0;
    bool m_showsProgress = false;
    qreal m_maxBarHeight = 24.0;
    qreal m_barWidth = 2.0;
    qreal m_barSpacing = 1.5;
};

} // namespace orlenta::shell
