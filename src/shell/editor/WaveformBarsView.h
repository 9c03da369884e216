#pragma once

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtWidgets/QAbstractSlider>

namespace orlenta::shell {

/// A line's audio as bars, with the share that has been played. Clicking in it asks for a seek, as do the arrow keys,
/// Page Up, Page Down, Home and End while it has the focus. Measures are in logical pixels.
class WaveformBarsView final : public QAbstractSlider {
    Q_OBJECT
public:
    explicit WaveformBarsView(QWidget *parent = nullptr);

    /// Peaks, 0 to 1; without any, the fall-back heights are shown.
    void setSamples(const QList<float> &samples);
    void setFallbackHeights(const QList<qreal> &heights);
    /// The colour of what has been played, on that ground. Other bars are calmer shades of it, no calmer than it takes
    /// to tell them from the ground.
    void setColor(const QColor &color, const QColor &ground);
    void setMaxBarHeight(qreal height);
    void setBars(qreal barWidth, qreal barSpacing);
    /// `progress` is 0 to 1.
    void setProgress(double progress);
    void setShowsProgress(bool showsProgress);

    [[nodiscard]] double progress() const;
    [[nodiscard]] bool showsProgress() const { return m_showsProgress; }
    [[nodiscard]] int barCount() const;
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void seekRequested(double fraction);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] qreal barHeight(int bar, int bars) const;

    QList<float> m_samples;
    QList<qreal> m_fallbackHeights;
    QColor m_color;
    QColor m_played;
    QColor m_ground;
    qreal m_idleOpacity = 1.0;
    qreal m_restingOpacity = 1.0;
    bool m_showsProgress = false;
    qreal m_maxBarHeight = 24.0;
    qreal m_barWidth = 2.0;
    qreal m_barSpacing = 1.5;
};

} // namespace orlenta::shell
