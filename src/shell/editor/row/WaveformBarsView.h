#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

#include "shell/editor/row/LineRowContent.h"

namespace orlenta::shell {

/// A line's audio as bars, with the share that has been played. Clicking in it asks for a seek, as do the arrow keys,
/// Page Up, Page Down, Home and End while it has the focus; Space and Return ask to play. Measures are in logical
/// pixels. Assistive technology can read the place at any time, but is told a change of it only at rest and for the
/// user's own seeks.
class WaveformBarsView final : public QWidget {
    Q_OBJECT
public:
    /// Share of the sound by which an arrow key, or Page Up and Page Down, move the playhead.
    static constexpr double keyStep = 0.02;
    static constexpr double pageStep = 0.1;

    explicit WaveformBarsView(QWidget *parent = nullptr);

    /// Peaks, 0 to 1; without any, the fall-back heights are shown.
    void setSamples(const QList<float> &samples);
    void setFallbackHeights(const QList<qreal> &heights);
    /// The colour of what has been played, on that ground. Other bars are calmer shades of it, no calmer than it takes
    /// to tell them from the ground.
    void setColor(const QColor &color, const QColor &ground);
    void setMaxBarHeight(qreal height);
    void setBars(qreal barWidth, qreal barSpacing);
    /// `progress` is 0 to 1. While the sound plays it is one of many, and not told.
    void setProgress(double progress, RowPlayback playback);
    void setShowsProgress(bool showsProgress);
    /// Asks for that share of the sound, 0 to 1, for the user.
    void seek(double fraction);

    [[nodiscard]] double progress() const { return m_progress; }
    /// The same in percent, as it is told.
    [[nodiscard]] int percent() const;
    [[nodiscard]] bool showsProgress() const { return m_showsProgress; }
    [[nodiscard]] int barCount() const;
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void seekRequested(double fraction);
    /// Space or Return: play what the waveform shows, or stop.
    void playRequested();
    /// The place is another one than was told last, at rest or by the user's own doing: assistive technology is told.
    void placeTold(int percent);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] qreal barHeight(int bar, int bars) const;
    void tellProgress();

    QList<float> m_samples;
    QList<qreal> m_fallbackHeights;
    QColor m_color;
    QColor m_played;
    QColor m_ground;
    qreal m_idleOpacity = 1.0;
    qreal m_restingOpacity = 1.0;
    double m_progress = 0.0;
    int m_toldPercent = 0;
    bool m_showsProgress = false;
    qreal m_maxBarHeight = 24.0;
    qreal m_barWidth = 2.0;
    qreal m_barSpacing = 1.5;
};

} // namespace orlenta::shell
