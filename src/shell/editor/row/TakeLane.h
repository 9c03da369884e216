#pragma once

#include <QtWidgets/QWidget>

namespace orlenta::shell {

class WaveformBarsView;

/// The room of a waveform. If all lanes of a tab stand for the same time, a waveform is as long as its audio and a line
/// fills the rest; longer audio fills the lane and ends in a zigzag.
class TakeLane final : public QWidget {
    Q_OBJECT
public:
    explicit TakeLane(QWidget *parent);

    [[nodiscard]] WaveformBarsView &waveform() const { return *m_waveform; }
    /// The length of the audio and of the lane in seconds; 0 if unknown. Without both, the waveform fills the lane.
    void setTimes(double seconds, double laneSeconds);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    [[nodiscard]] bool isTooLong() const;
    [[nodiscard]] int zigzagWidth() const;
    void layOut();

    WaveformBarsView *m_waveform;
    double m_seconds = 0.0;
    double m_laneSeconds = 0.0;
};

} // namespace orlenta::shell
